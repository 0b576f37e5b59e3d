// Formats bytes as hexadecimal digits, two for each.
#ifndef SEALKEEPER_INSPECT_REPORT_HEX_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_HEX_TEXT_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace sealkeeper {

// "51565aff", the form of digests.
[[nodiscard]] std::string HexText(std::span<const std::uint8_t> bytes);
[[nodiscard]] std::string HexText(std::string_view bytes);

// "51 56 5A FF", or with another separator; the form of fingerprints.
[[nodiscard]] std::string SeparatedHexText(std::span<const std::uint8_t> bytes,
                                           char separator = ' ');

}  // namespace sealkeeper

#endif
