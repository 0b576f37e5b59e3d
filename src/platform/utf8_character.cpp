#include "platform/utf8_character.h"

#include <algorithm>
#include <cstddef>

namespace sealkeeper {
namespace {

constexpr ByteRange kContinuation{0x80, 0xBF};

// The Unicode Standard, Table 3-7: well-formed UTF-8 byte sequences.
ByteRange SecondBytesOf(char lead) {
    switch (static_cast<unsigned char>(lead)) {
        case 0xE0:
            return {0xA0, 0xBF};
        case 0xED:
            return {0x80, 0x9F};
        case 0xF0:
            return {0x90, 0xBF};
        case 0xF4:
            return {0x80, 0x8F};
        default:
            return kContinuation;
    }
}

std::size_t LengthToldBy(char lead) {
    if (IsIn({0xC2, 0xDF}, lead)) {
        return 2;
    }
    if (IsIn({0xE0, 0xEF}, lead)) {
        return 3;
    }
    return IsIn({0xF0, 0xF4}, lead) ? 4 : 1;
}

}  // namespace

std::string_view FirstUtf8Character(std::string_view text) {
    const std::size_t length = LengthToldBy(text.front());
    const std::string_view character = text.substr(0, length);
    const bool isWellFormed = length > 1 && character.size() == length &&
                              IsIn(SecondBytesOf(text.front()), character[1]) &&
                              std::all_of(character.begin() + 2, character.end(),
                                          [](char byte) { return IsIn(kContinuation, byte); });
    return isWellFormed ? character : text.substr(0, 1);
}

std::array<char, 4> HexEscapeOf(char byte) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    return {'\\', 'x', kDigits[value / 16U], kDigits[value % 16U]};
}

}  // namespace sealkeeper
