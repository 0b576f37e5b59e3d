// Reads a hash catalogue. Nothing in the file is trusted: every length and count is held against
// the bytes that are there.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_READER_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_READER_H

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "app/result_code.h"
#include "catalogue/stored_entry.h"

namespace sealkeeper {

// Checks the signature of a file whose header and lengths are sound. May clear the signature.
using SignatureCheck = std::function<ResultCode(std::span<std::uint8_t> fileBytes)>;

// Reads the whole file `fileBytes` into `crlBlock` and `entries`, which are cleared first. The
// signature is checked by `checkSignature`, before anything behind the header is looked at, and not
// at all when that is empty. Fails with `FileInvalid` when the file is no well-formed catalogue,
// whatever is wrong with it, and as `checkSignature` does; `entries` is then empty.
ResultCode ParseCatalogueImage(std::span<std::uint8_t> fileBytes,
                               const SignatureCheck& checkSignature,
                               std::vector<std::uint8_t>& crlBlock, EntryList& entries);

}  // namespace sealkeeper

#endif
