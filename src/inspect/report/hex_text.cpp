#include "inspect/show/hex_text.h"

#include <string_view>

namespace sealkeeper {
namespace {

void AppendHex(std::string& text, std::uint8_t byte, std::string_view digits) {
    text += digits[byte / 16U];
    text += digits[byte % 16U];
}

}  // namespace

std::string SpacedHex(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) {
            text += ' ';
        }
        AppendHex(text, byte, "0123456789ABCDEF");
    }
    return text;
}

std::string Hex(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        AppendHex(text, byte, "0123456789abcdef");
    }
    return text;
}

}  // namespace sealkeeper
