// Reads a hash catalogue in steps: the file with its header, its signature (catalogue_signature.h),
// its body. Nothing in the file is trusted: every length and count is checked against the bytes
// that are there.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_READER_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_READER_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "catalogue/stored_entry.h"
#include "platform/file_io.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

// What the header of a catalogue says about the blocks after it.
struct CatalogueHeader {
    std::size_t crlLength = 0;
    std::size_t compressedLength = 0;
    std::uint32_t entryCount = 0;
};

struct CatalogueFile {
    std::vector<std::uint8_t> bytes;
    // Its lengths match the length of `bytes`.
    CatalogueHeader header;
};

// Reads the header from `start`, the first bytes of a file. Fails with `FileInvalid` when it is not
// a header of this format or its lengths do not add up to `fileSizeBytes`; then the reason is
// stored in `*reason`, unless `reason` is null.
ResultCode ReadCatalogueHeader(std::span<const std::uint8_t> start, std::uint64_t fileSizeBytes,
                               CatalogueHeader& header, InvalidReason* reason = nullptr);

// Reads the whole catalogue file at `path`, which is opened once. Fails with `CatalogueIOError`
// when it cannot be read, and as `ReadCatalogueHeader` does; then nothing after the header is read.
ResultCode ReadCatalogueFile(const std::string& path, CatalogueFile& file);

// The same for an open file of which `file.bytes` holds what was read so far. `reason` is that of
// `ReadCatalogueHeader`.
ResultCode ReadCatalogueFile(SizedFile opened, CatalogueFile& file,
                             InvalidReason* reason = nullptr);

// The revocation-list block as it was given to the writer; a view of the file's bytes.
[[nodiscard]] std::span<const std::uint8_t> CrlBlockOf(const CatalogueFile& file);

// The compressed entry block; a view of the file's bytes.
[[nodiscard]] std::span<const std::uint8_t> CompressedBlockOf(const CatalogueFile& file);

// Reads the entries of a file whose header is valid. The entries do not refer to the file's bytes.
// Fails with `FileInvalid` as `ReadEntryBlock` does; then `entries` is empty.
ResultCode ReadCatalogueBody(const CatalogueFile& file, EntryList& entries);

}  // namespace sealkeeper

#endif
