// What is told of a configuration's own words.
#ifndef SEALKEEPER_INSPECT_LINT_SHOWN_TEXT_H
#define SEALKEEPER_INSPECT_LINT_SHOWN_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

// In bytes.
inline constexpr std::size_t kLongestShown = 60;

// `text` in single quotes. What is long is cut, between characters of UTF-8, and ends in "...".
[[nodiscard]] std::string ShownName(std::string_view text);

// "'a'", "'a' and 'b'", "'a', 'b' and 'c'"; of more than four the number of the others.
[[nodiscard]] std::string ShownNames(const std::vector<std::string>& names);

// `text` as it would be written in a configuration file: in double quotes, cut like a name.
[[nodiscard]] std::string ShownValue(std::string_view text);

// Without what the scan skips between tokens, and line ends, at its start.
[[nodiscard]] std::string_view WithoutLeadingBlanks(std::string_view text);

// Without such bytes at both ends. Looks at all of those at its end, so it is nothing to be asked
// for each value of a line.
[[nodiscard]] std::string_view TrimmedBlanks(std::string_view text);

// Whether nothing but such bytes is in it. Looks no further than at the first other one.
[[nodiscard]] bool IsBlank(std::string_view text);

}  // namespace sealkeeper

#endif
