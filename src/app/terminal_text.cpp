#include "app/terminal_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace sealkeeper {
namespace {

struct ByteRange {
    unsigned char first;
    unsigned char last;
};

constexpr ByteRange kContinuation{0x80, 0xBF};

bool IsIn(ByteRange range, char character) {
    const auto byte = static_cast<unsigned char>(character);
    return range.first <= byte && byte <= range.last;
}

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

// The bytes of the first character of `text`, which is not empty.
std::string_view FirstCharacter(std::string_view text) {
    const std::size_t length = LengthToldBy(text.front());
    const std::string_view character = text.substr(0, length);
    const bool isWellFormed = length > 1 && character.size() == length &&
                              IsIn(SecondBytesOf(text.front()), character[1]) &&
                              std::all_of(character.begin() + 2, character.end(),
                                          [](char byte) { return IsIn(kContinuation, byte); });
    return isWellFormed ? character : text.substr(0, 1);
}

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

// "\x" and the two hexadecimal digits of `byte`.
std::array<char, 4> EscapeOf(char byte) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    return {'\\', 'x', kDigits[value / 16U], kDigits[value % 16U]};
}

// Hands `emit` what is shown of each character of `text`, in pieces.
template <typename Emit>
void ForEachShown(std::string_view text, std::string_view marked, Emit emit) {
    std::string_view character;
    for (std::size_t start = 0; start < text.size(); start += character.size()) {
        character = FirstCharacter(text.substr(start));
        const bool isOwn = start < marked.size() && text[start] != marked[start];
        if (isOwn || !IsControl(character)) {
            emit(character);
            continue;
        }
        for (const char byte : character) {
            const auto escape = EscapeOf(byte);
            emit(std::string_view(escape.data(), escape.size()));
        }
    }
}

}  // namespace

bool BeginsWithControl(std::string_view text) {
    return IsControl(FirstCharacter(text));
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
