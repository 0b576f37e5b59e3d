#include "inspect/report/terminal_safe_text.h"

#include "app/terminal_text.h"
#include "platform/utf8_character.h"

namespace sealkeeper {
namespace {

// Whether the character is a line or paragraph separator (U+2028, U+2029) or has the property
// Bidi_Control (Unicode Standard Annex 9).
bool OrdersText(std::string_view character) {
    if (character == "\xD8\x9C") {
        return true;  // U+061C
    }
    if (character.size() != 3) {
        return false;
    }
    constexpr ByteRange kMarks{0x8E, 0x8F};                    // U+200E and U+200F
    constexpr ByteRange kSeparatorsAndEmbeddings{0xA8, 0xAE};  // U+2028 to U+202E
    constexpr ByteRange kIsolates{0xA6, 0xA9};                 // U+2066 to U+2069
    const char last = character.back();
    if (character.starts_with("\xE2\x80")) {
        return IsIn(kMarks, last) || IsIn(kSeparatorsAndEmbeddings, last);
    }
    return character.starts_with("\xE2\x81") && IsIn(kIsolates, last);
}

}  // namespace

std::string TerminalSafeText(std::string_view text) {
    std::string safe;
    std::string_view character;
    for (; !text.empty(); text.remove_prefix(character.size())) {
        character = FirstUtf8Character(text);
        if (!BeginsWithControl(character) && !OrdersText(character)) {
            safe += character;
            continue;
        }
        for (const char byte : character) {
            const auto escape = HexEscapeOf(byte);
            safe.append(escape.data(), escape.size());
        }
    }
    return safe;
}

}  // namespace sealkeeper
