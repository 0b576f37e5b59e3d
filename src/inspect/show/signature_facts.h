// Checks the signature of a file with the certificate beside it, using the tool's own functions.
#ifndef SEALKEEPER_INSPECT_SHOW_SIGNATURE_FACTS_H
#define SEALKEEPER_INSPECT_SHOW_SIGNATURE_FACTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/catalogue_reader.h"
#include "inspect/show/shown_file.h"

namespace sealkeeper {

// Checks the catalogue at `path` with the certificate of the same name. Its header must be sound.
// Clears the signature in `file` if there is a certificate to check it with. With a product id,
// also tells whether the certificate is trusted for it.
[[nodiscard]] SignatureFacts CheckCatalogueSignature(const std::string& path, CatalogueFile& file,
                                                     const std::optional<std::string>& productId);

// As above, for the contents `stored` of a runtime.conf. The certificate is that of the game's own
// catalogue in the same directory.
[[nodiscard]] SignatureFacts CheckRuntimeSignature(const std::string& path,
                                                   std::vector<std::uint8_t> stored,
                                                   const std::optional<std::string>& productId);

}  // namespace sealkeeper

#endif
