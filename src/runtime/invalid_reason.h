// Why a file of one of the two signed formats is invalid. The readers return one result code for
// every reason; a caller that must tell more passes one of these.
#ifndef SEALKEEPER_RUNTIME_INVALID_REASON_H
#define SEALKEEPER_RUNTIME_INVALID_REASON_H

#include <cstdint>

#include "app/result_code.h"

namespace sealkeeper {

// The field decides what `found` and `expected` of a reason mean. Numbers are as stored.
enum class InvalidField {
    // The length of the file in bytes, and the least length.
    FileLength,
    // The first four bytes as a number.
    Magic,
    FormatVersion,
    // `crl_length` and `compressed_length`: their sum, and how many bytes there are after the
    // header.
    BlockLengths,
    // The first two bytes of the compressed block, or fewer if it is shorter, as a number.
    BlockMagic,
    // Both 0: no particular width is expected.
    CodeWidth,
    // Code number `index` of the compressed block: the code, and the last code that stands for a
    // string at that point.
    Code,
    // The codes up to number `index` give more than `expected` bytes.
    UncompressedLength,
    // The count, and how many records without digests would fit.
    EntryCount,
    // Record number `index`: how many bytes are left for it, and how many its fixed part has.
    Record,
    // Record number `index`: its digest count, and how many digests would fit.
    DigestCount,
    // The version of the settings in a runtime.conf.
    SettingsVersion,
};

// Where an offset counts from: the start of the file or of a block.
enum class InvalidPlace { File, CompressedBlock, EntryBlock };

struct InvalidReason {
    InvalidField field = InvalidField::FileLength;
    InvalidPlace place = InvalidPlace::File;
    // For a runtime.conf, an offset into the unscrambled bytes.
    std::uint64_t offset = 0;
    std::uint64_t found = 0;
    std::uint64_t expected = 0;
    // Counted from 0. Also 0 for fields that occur once.
    std::uint64_t index = 0;
};

// Stores `why` in `*reason`, unless `reason` is null.
inline void TellReason(const InvalidReason& why, InvalidReason* reason) {
    if (reason != nullptr) {
        *reason = why;
    }
}

// The same, for a caller that fails with it; returns `FileInvalid`.
inline ResultCode FailInvalid(const InvalidReason& why, InvalidReason* reason) {
    TellReason(why, reason);
    return ResultCode::FileInvalid;
}

}  // namespace sealkeeper

#endif
