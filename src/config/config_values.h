// Reads the values of the configuration file from the bytes between their delimiters.
#ifndef SEALKEEPER_CONFIG_CONFIG_VALUES_H
#define SEALKEEPER_CONFIG_CONFIG_VALUES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

// Parts of a text, without the double quotes around them and with backslashes as written.
using QuotedTexts = std::vector<std::string_view>;

// The quoted elements of `text`, empty ones left out; bytes outside quotes are ignored. Nothing
// when an element contains a line feed.
[[nodiscard]] std::optional<QuotedTexts> FindListElements(std::string_view text);

// The quoted names and values of `text` in turn. Stops at the first pair that is incomplete or has
// an empty name or value.
[[nodiscard]] QuotedTexts FindPairs(std::string_view text);

// The decimal digits at the start of `text` as an unsigned 32-bit number that wraps on overflow,
// then reinterpreted as signed and sign-extended.
[[nodiscard]] std::int64_t ParseNumber(std::string_view text);

// Replaces every run of backslashes by a single one: deliberately, four give one and not two. There
// are no other escape sequences.
[[nodiscard]] std::string UnescapeBackslashes(const std::string& text);

}  // namespace sealkeeper

#endif
