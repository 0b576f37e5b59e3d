// ASCII letters, whatever the locale.
#ifndef SEALKEEPER_PLATFORM_ASCII_CASE_H
#define SEALKEEPER_PLATFORM_ASCII_CASE_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `text` with 'A' to 'Z' in lower case and every other byte unchanged.
[[nodiscard]] std::string LowerCasedAscii(std::string_view text);

// Whether `byte` is 'A' to 'Z' or 'a' to 'z'.
[[nodiscard]] bool IsAsciiLetter(char byte);

}  // namespace sealkeeper

#endif
