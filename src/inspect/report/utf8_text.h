// Names on disk are bytes, while JSON and HTML are text in UTF-8.
#ifndef SEALKEEPER_INSPECT_RULES_UTF8_TEXT_H
#define SEALKEEPER_INSPECT_RULES_UTF8_TEXT_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `bytes` with each byte that belongs to no well-formed UTF-8 as U+FFFD: itself, where all do.
[[nodiscard]] std::string WellFormedUtf8(const std::string& bytes);

// Two lower-case hexadecimal digits for each byte.
[[nodiscard]] std::string HexText(std::string_view bytes);

}  // namespace sealkeeper

#endif
