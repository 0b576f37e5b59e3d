// Which certificate a catalogue is verified with.
#ifndef SEALKEEPER_CATALOGUE_CERTIFICATE_PATH_H
#define SEALKEEPER_CATALOGUE_CERTIFICATE_PATH_H

#include <optional>
#include <string>

namespace sealkeeper {

// `cataloguePath` with its last dot and everything after it replaced by ".cer", even if that dot is
// in the name of a directory. Nothing for a path without a dot.
[[nodiscard]] std::optional<std::string> CertificatePathOf(const std::string& cataloguePath);

}  // namespace sealkeeper

#endif
