// Bytes as people read them: two hexadecimal digits for each.
#ifndef SEALKEEPER_INSPECT_REPORT_HEX_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_HEX_TEXT_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace sealkeeper {

// "51565aff", as digests are written.
[[nodiscard]] std::string HexText(std::span<const std::uint8_t> bytes);
[[nodiscard]] std::string HexText(std::string_view bytes);

// "51 56 5A FF", or with another separator, as of fingerprints.
[[nodiscard]] std::string SeparatedHexText(std::span<const std::uint8_t> bytes,
                                           char separator = ' ');

}  // namespace sealkeeper

#endif
