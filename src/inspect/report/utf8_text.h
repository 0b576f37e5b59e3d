// Names on disk are bytes, but JSON and HTML are UTF-8.
#ifndef SEALKEEPER_INSPECT_REPORT_UTF8_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_UTF8_TEXT_H

#include <string>

namespace sealkeeper {

// `bytes` with U+FFFD in place of each byte that is not part of well-formed UTF-8.
[[nodiscard]] std::string WellFormedUtf8(const std::string& bytes);

// Whether `bytes` is well-formed UTF-8 throughout. Generate's conversion of a name then succeeds,
// unless the system has no converter.
[[nodiscard]] bool IsUtf8(const std::string& bytes);

}  // namespace sealkeeper

#endif
