// Which certificate a catalogue is verified with.
#ifndef SEALKEEPER_CATALOGUE_CERTIFICATE_PATH_H
#define SEALKEEPER_CATALOGUE_CERTIFICATE_PATH_H

#include <optional>
#include <string>

namespace sealkeeper {

// `cataloguePath` with ".cer" in place of its last dot and what follows it, be that in the name or
// before it. Nothing for a path without a dot.
[[nodiscard]] std::optional<std::string> CertificatePathOf(const std::string& cataloguePath);

}  // namespace sealkeeper

#endif
