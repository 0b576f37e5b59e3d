// Bytes as people read them.
#ifndef SEALKEEPER_INSPECT_SHOW_HEX_TEXT_H
#define SEALKEEPER_INSPECT_SHOW_HEX_TEXT_H

#include <cstdint>
#include <span>
#include <string>

namespace sealkeeper {

// "51 56 52 00".
[[nodiscard]] std::string SpacedHex(std::span<const std::uint8_t> bytes);

// "51565200".
[[nodiscard]] std::string Hex(std::span<const std::uint8_t> bytes);

}  // namespace sealkeeper

#endif
