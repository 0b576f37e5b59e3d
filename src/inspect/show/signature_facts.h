// Checks the signature of a file with the certificate that lies beside it, by the tool's own
// functions.
#ifndef SEALKEEPER_INSPECT_SHOW_SIGNATURE_FACTS_H
#define SEALKEEPER_INSPECT_SHOW_SIGNATURE_FACTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/catalogue_reader.h"
#include "inspect/show/shown_file.h"

namespace sealkeeper {

// Checks a catalogue at `path`, whose header is sound, with the certificate of the same name. The
// signature in `file` is zero afterwards where there is a certificate to check it with. Where there
// is a product id, also tells whether the certificate is trusted for it.
[[nodiscard]] SignatureFacts CheckCatalogueSignature(const std::string& path, CatalogueFile& file,
                                                     const std::optional<std::string>& productId);

// The same for the `stored` bytes of a runtime.conf and the certificate of the game's own catalogue
// in its directory.
[[nodiscard]] SignatureFacts CheckRuntimeSignature(const std::string& path,
                                                   std::vector<std::uint8_t> stored,
                                                   const std::optional<std::string>& productId);

}  // namespace sealkeeper

#endif
