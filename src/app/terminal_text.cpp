#include "app/terminal_text.h"

#include <cstddef>

#include "platform/utf8_character.h"

namespace sealkeeper {
namespace {

bool IsControl(std::string_view character) {
    constexpr ByteRange kC0{0x00, 0x1F};
    constexpr ByteRange kDel{0x7F, 0x7F};
    constexpr ByteRange kC1{0x80, 0x9F};
    const char last = character.back();
    if (character.size() == 1) {
        return IsIn(kC0, last) || IsIn(kDel, last) || IsIn(kC1, last);
    }
    return character.size() == 2 && character.front() == '\xC2' && IsIn(kC1, last);
}

// Calls `emit` with what is shown for each character of `text`, piece by piece.
template <typename Emit>
void ForEachShown(std::string_view text, std::string_view marked, Emit emit) {
    std::string_view character;
    for (std::size_t start = 0; start < text.size(); start += character.size()) {
        character = FirstUtf8Character(text.substr(start));
        const bool isOwn = start < marked.size() && text[start] != marked[start];
        if (isOwn || !IsControl(character)) {
            emit(character);
            continue;
        }
        for (const char byte : character) {
            const auto escape = HexEscapeOf(byte);
            emit(std::string_view(escape.data(), escape.size()));
        }
    }
}

}  // namespace

bool BeginsWithControl(std::string_view text) {
    return IsControl(FirstUtf8Character(text));
}

std::string EscapeControls(std::string_view text) {
    std::string escaped;
    ForEachShown(text, text, [&escaped](std::string_view shown) { escaped += shown; });
    return escaped;
}

void WriteForTerminal(std::string_view text, std::string_view marked, std::FILE* stream) {
    ForEachShown(text, marked, [stream](std::string_view shown) {
        std::fwrite(shown.data(), 1, shown.size(), stream);
    });
}

}  // namespace sealkeeper
