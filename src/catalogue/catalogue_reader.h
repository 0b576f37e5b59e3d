// Reads a hash catalogue in steps: its file with the header, its signature
// (catalogue_signature.h), its body. Nothing in the file is trusted: every length and count is held
// against the bytes that are there.
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

// What the header of a catalogue tells of the blocks after it.
struct CatalogueHeader {
    std::size_t crlLength = 0;
    std::size_t compressedLength = 0;
    std::uint32_t entryCount = 0;
};

struct CatalogueFile {
    std::vector<std::uint8_t> bytes;
    // Its lengths add up to that of the bytes.
    CatalogueHeader header;
};

// Reads the header that `start`, the first bytes of a file, begins with. Fails with `FileInvalid`
// when there is none of this format or its lengths do not add up to `fileSizeBytes`; what is wrong
// is then in `*reason`, unless that is null.
ResultCode ReadCatalogueHeader(std::span<const std::uint8_t> start, std::uint64_t fileSizeBytes,
                               CatalogueHeader& header, InvalidReason* reason = nullptr);

// Reads the whole catalogue file at `path`, in one opening. Fails with `CatalogueIOError` when it
// cannot be read, and with `FileInvalid` when it does not begin with the header of a file of its
// size, of which no more is read then.
ResultCode ReadCatalogueFile(const std::string& path, CatalogueFile& file);

// The same for a file of which `file.bytes` holds what was read so far; `reason` is that of
// `ReadCatalogueHeader`.
ResultCode ReadCatalogueFile(SizedFile opened, CatalogueFile& file,
                             InvalidReason* reason = nullptr);

// As it was given to the writer; a view of the file's bytes.
[[nodiscard]] std::span<const std::uint8_t> CrlBlockOf(const CatalogueFile& file);

// The entry block as it is compressed; a view of the file's bytes.
[[nodiscard]] std::span<const std::uint8_t> CompressedBlockOf(const CatalogueFile& file);

// Reads the entries of a file whose header is sound, which need its bytes no more then. Fails with
// `FileInvalid` as `ReadEntryBlock` does; `entries` is then empty.
ResultCode ReadCatalogueBody(const CatalogueFile& file, EntryList& entries);

}  // namespace sealkeeper

#endif
