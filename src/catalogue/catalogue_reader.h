// Reads a hash catalogue. Nothing in the file is trusted: every length and count is held against
// the bytes that are there.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_READER_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_READER_H

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "catalogue/stored_entry.h"

namespace sealkeeper {

// Reads the whole catalogue file at `path` into `fileBytes`. Fails with `CatalogueIOError` when it
// cannot be read, and with `FileInvalid` when it does not begin with the header of a file of its
// size, of which no more is read then.
ResultCode ReadCatalogueFile(const std::string& path, std::vector<std::uint8_t>& fileBytes);

// Checks the signature of a file whose header and lengths are sound; may clear the signature.
using SignatureCheck = std::function<ResultCode(std::span<std::uint8_t> fileBytes)>;

struct ParsedCatalogue {
    // As it was given to the writer; a view of the file's bytes.
    std::span<const std::uint8_t> crlBlock;
    EntryList entries;
};

// Reads the whole file `fileBytes` into `catalogue`. `checkSignature`, which must not be empty, is
// asked before anything behind the header is looked at. Fails with `FileInvalid` when the file is
// no well-formed catalogue, whatever is wrong with it, and as `checkSignature` does; `catalogue` is
// then empty.
ResultCode ParseCatalogueImage(std::span<std::uint8_t> fileBytes,
                               const SignatureCheck& checkSignature, ParsedCatalogue& catalogue);

}  // namespace sealkeeper

#endif
