// Names on disk are bytes, while JSON and HTML are text in UTF-8.
#ifndef SEALKEEPER_INSPECT_REPORT_UTF8_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_UTF8_TEXT_H

#include <string>

namespace sealkeeper {

// `bytes` with each byte that belongs to no well-formed UTF-8 as U+FFFD: itself, where all do.
[[nodiscard]] std::string WellFormedUtf8(const std::string& bytes);

}  // namespace sealkeeper

#endif
