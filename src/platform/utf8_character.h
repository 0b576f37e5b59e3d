// The characters of text that should be UTF-8 but may contain other bytes.
#ifndef SEALKEEPER_PLATFORM_UTF8_CHARACTER_H
#define SEALKEEPER_PLATFORM_UTF8_CHARACTER_H

#include <array>
#include <string_view>

namespace sealkeeper {

struct ByteRange {
    unsigned char first;
    unsigned char last;
};

[[nodiscard]] inline bool IsIn(ByteRange range, char character) {
    const auto byte = static_cast<unsigned char>(character);
    return range.first <= byte && byte <= range.last;
}

// The bytes of the first character of `text`, which must not be empty. A byte that is not part of
// well-formed UTF-8 is a character of its own.
[[nodiscard]] std::string_view FirstUtf8Character(std::string_view text);

// "\x" and the two hexadecimal digits of `byte`.
[[nodiscard]] std::array<char, 4> HexEscapeOf(char byte);

}  // namespace sealkeeper

#endif
