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

// The entry block: the records of all files, one after the other, compressed.
struct EntryBlock {
    std::vector<std::uint8_t> compressed;
    std::size_t uncompressedBytes = 0;
    std::size_t entryCount = 0;
};

// Hashes `files`, of which there is at least one, by `chunks` in the order given and puts their
// records into `block`, which is empty. Only the compressed form is ever in memory. The first
// failure ends it; `CatalogueError`, logged, when the system fails to convert a path or the
// uncompressed block has more bytes than a 32-bit field can tell. `block` is then incomplete.
ResultCode BuildEntryBlock(std::vector<FoundFile> files, const AliasMap& aliases,
                           std::unique_ptr<ChunkHasher> chunks, EntryBlock& block);

// Builds the signed file: header, `crlBlock` as it stands, `block`. `CatalogueError`,
// logged, when a length or a count does not fit its 32-bit field; the signing error when signing
// fails.
ResultCode BuildCatalogueImage(mbedtls_pk_context* privateKey,
                               std::span<const std::uint8_t> crlBlock, const EntryBlock& block,
                               std::vector<std::uint8_t>& image);

// Writes `image` to `outputPath`, as `WriteWholeFile` does. `CatalogueIOError`, logged, when it
// cannot be opened or written; `CatalogueError`, logged, when the system fails to convert the path.
ResultCode WriteCatalogueImage(const std::wstring& outputPath, std::span<const std::uint8_t> image);

}  // namespace sealkeeper

#endif
