#include "inspect/report/xml_text.h"

#include <cstddef>

#include "platform/utf8_character.h"

namespace sealkeeper {
namespace {

bool IsKept(std::string_view character) {
    constexpr ByteRange kAscii{0x20, 0x7F};
    constexpr std::string_view kFffe = "\xEF\xBF\xBE";
    constexpr std::string_view kFfff = "\xEF\xBF\xBF";
    if (character.size() == 1) {
        return IsIn(kAscii, character.front());
    }
    return character != kFffe && character != kFfff;
}

}  // namespace

std::string XmlText(std::string_view text) {
    std::string kept;
    std::string_view character;
    for (std::size_t start = 0; start < text.size(); start += character.size()) {
        character = FirstUtf8Character(text.substr(start));
        if (IsKept(character)) {
            kept += character;
            continue;
        }
        for (const char byte : character) {
            const auto escape = HexEscapeOf(byte);
            kept.append(escape.data(), escape.size());
        }
    }
    return kept;
}

}  // namespace sealkeeper
