// Builds the image of a hash catalogue and writes it.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_WRITER_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_WRITER_H

#include <mbedtls/pk.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "catalogue/hashing/chunk_hasher.h"
#include "catalogue/path_alias.h"
#include "platform/found_file.h"

namespace sealkeeper {

// The entry block: the compressed records of all files, one after the other.
struct EntryBlock {
    std::vector<std::uint8_t> compressed;
    std::size_t uncompressedBytes = 0;
    std::size_t entryCount = 0;
};

// Records are compressed in batches of about this size, because hashing in between evicts the
// compressor's tables from the L1 and L2 caches.
inline constexpr std::size_t kRecordsAtOnceBytes = 262'144;

// Hashes `files` with `chunks` in the order given and adds their records to `block`. There must be
// at least one file, and `block` must be empty. The uncompressed block is never in memory as a
// whole. Stops at the first failure, with `block` incomplete: `CatalogueError`, logged, when the
// system fails to convert a path or the uncompressed length does not fit its 32-bit field;
// otherwise as `BuildCatalogueEntry` and `ApplyPathAlias` do.
ResultCode BuildEntryBlock(std::vector<FoundFile> files, const AliasMap& aliases,
                           std::unique_ptr<ChunkHasher> chunks, EntryBlock& block);

// Builds the signed file: header, `crlBlock` unchanged, `block`. Fails with `CatalogueError`,
// logged, when a length does not fit its 32-bit field, and as `SignCatalogueImage` does.
ResultCode BuildCatalogueImage(mbedtls_pk_context* privateKey,
                               std::span<const std::uint8_t> crlBlock, const EntryBlock& block,
                               std::vector<std::uint8_t>& image);

// Writes `image` to `outputPath` with `WriteWholeFile`. Fails with `CatalogueIOError`, logged, when
// the file cannot be opened or written, and with `CatalogueError`, logged, when the system fails to
// convert the path.
ResultCode WriteCatalogueImage(const std::wstring& outputPath, std::span<const std::uint8_t> image);

}  // namespace sealkeeper

#endif
