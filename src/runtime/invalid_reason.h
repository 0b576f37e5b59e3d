// What makes a file of one of the two signed formats invalid. The readers have one code for all of
// it; who has to tell more hands them one of these.
#ifndef SEALKEEPER_RUNTIME_INVALID_REASON_H
#define SEALKEEPER_RUNTIME_INVALID_REASON_H

#include <cstdint>

#include "app/result_code.h"

namespace sealkeeper {

// What `found` and `expected` of a reason are depends on the field. Numbers are as stored.
enum class InvalidField {
    // The bytes of the file, and how many it must have at least.
    FileLength,
    // The first four bytes as a number.
    Magic,
    FormatVersion,
    // `crl_length` and `compressed_length`: their sum, and how many bytes there are after the
    // header.
    BlockLengths,
    // The first two bytes of the compressed block, fewer where it ends.
    BlockMagic,
    // Both 0: no width is expected more than another.
    CodeWidth,
    // A code of the compressed block, of the number `index`: the code, and the last one that stands
    // for a string there.
    Code,
    // What the codes give up to the one of the number `index` is more than `expected` bytes.
    UncompressedLength,
    // The count, and how many records without digests there is room for.
    EntryCount,
    // The record of the number `index`: how many bytes are left for it, and how many its fixed part
    // has.
    Record,
    // The same: how many digests it tells of, and how many there is room for.
    DigestCount,
    // The version of the settings in a runtime.conf.
    SettingsVersion,
};

// What an offset counts from the start of.
enum class InvalidPlace { File, CompressedBlock, EntryBlock };

struct InvalidReason {
    InvalidField field = InvalidField::FileLength;
    InvalidPlace place = InvalidPlace::File;
    // Of a runtime.conf, in the bytes as they are once unscrambled.
    std::uint64_t offset = 0;
    std::uint64_t found = 0;
    std::uint64_t expected = 0;
    // Counted from 0; 0 for the fields of which there is one.
    std::uint64_t index = 0;
};

// Leaves `why` in `*reason`, unless that is null.
inline void TellReason(const InvalidReason& why, InvalidReason* reason) {
    if (reason != nullptr) {
        *reason = why;
    }
}

// The same for who fails by it; returns `FileInvalid`.
inline ResultCode FailInvalid(const InvalidReason& why, InvalidReason* reason) {
    TellReason(why, reason);
    return ResultCode::FileInvalid;
}

}  // namespace sealkeeper

#endif
