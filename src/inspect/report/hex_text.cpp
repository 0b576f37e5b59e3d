#include "inspect/report/hex_text.h"

namespace sealkeeper {
namespace {

void AppendHex(std::string& text, std::uint8_t byte, std::string_view digits) {
    text += digits[byte / 16U];
    text += digits[byte % 16U];
}

}  // namespace

std::string HexText(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        AppendHex(text, byte, "0123456789abcdef");
    }
    return text;
}

std::string HexText(std::string_view bytes) {
    return HexText({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

std::string SeparatedHexText(std::span<const std::uint8_t> bytes, char separator) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) {
            text += separator;
        }
        AppendHex(text, byte, "0123456789ABCDEF");
    }
    return text;
}

}  // namespace sealkeeper
