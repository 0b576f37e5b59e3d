// The values of the configuration file, from the bytes between their delimiters.
#ifndef SEALKEEPER_CONFIG_CONFIG_VALUES_H
#define SEALKEEPER_CONFIG_CONFIG_VALUES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

// Parts of a text, without the double quotes round them and with backslashes as they stand.
using QuotedTexts = std::vector<std::string_view>;

// The quoted elements of `text`, empty ones left out; bytes outside quotes are ignored. Nothing
// when an element contains a line feed.
[[nodiscard]] std::optional<QuotedTexts> FindListElements(std::string_view text);

// The quoted names and values of `text` in turn; ends before an empty name or value and where one
// of a pair is missing.
[[nodiscard]] QuotedTexts FindPairs(std::string_view text);

// The decimal digits at the start of `text` as an unsigned 32-bit number that wraps on overflow,
// then reinterpreted as signed and sign-extended.
[[nodiscard]] std::int64_t ParseNumber(std::string_view text);

// Collapses every run of two or more backslashes into a single one (deliberately four give one, not
// two). No other escape sequence exists.
[[nodiscard]] std::string UnescapeBackslashes(const std::string& text);

}  // namespace sealkeeper

#endif
