// Builds the image of a hash catalogue and writes it.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_WRITER_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_WRITER_H

#include <mbedtls/pk.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "catalogue/path_alias.h"

namespace sealkeeper {

// The uncompressed entry block: the records of all files, one after the other.
struct EntryBlock {
    std::vector<std::uint8_t> bytes;
    std::size_t entryCount = 0;
};

// Hashes `files` in the order given and appends their records to `block`. The first failure ends
// it.
ResultCode BuildEntryBlock(const std::vector<std::wstring>& files, const AliasMap& aliases,
                           EntryBlock& block);

// Builds the signed file: header, `crlBlock` as it stands, compressed `block`. `CatalogueError`,
// logged, when a length or a count does not fit its 32-bit field; the signing error when signing
// fails.
ResultCode BuildCatalogueImage(mbedtls_pk_context* privateKey,
                               std::span<const std::uint8_t> crlBlock, const EntryBlock& block,
                               std::vector<std::uint8_t>& image);

// Writes `image` to `outputPath`. `CatalogueIOError`, logged, when it cannot be opened or written;
// a partly written file stays.
ResultCode WriteCatalogueImage(const std::wstring& outputPath, std::span<const std::uint8_t> image);

}  // namespace sealkeeper

#endif
