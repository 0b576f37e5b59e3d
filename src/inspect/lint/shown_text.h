// Quotes parts of a configuration file in messages.
#ifndef SEALKEEPER_INSPECT_LINT_SHOWN_TEXT_H
#define SEALKEEPER_INSPECT_LINT_SHOWN_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

// In bytes.
inline constexpr std::size_t kLongestShown = 60;

// `text` in single quotes. A long text is cut between UTF-8 characters and ends in "...".
[[nodiscard]] std::string ShownName(std::string_view text);

// "'a'", "'a' and 'b'", "'a', 'b' and 'c'". Of more than four names the rest is counted.
[[nodiscard]] std::string ShownNames(const std::vector<std::string>& names);

// `text` in double quotes, as it is to be written in a configuration file. Never cut: the rest
// would be another path.
[[nodiscard]] std::string WholeValue(std::string_view text);

// `text` without leading line ends and other bytes that the scanner skips between tokens.
[[nodiscard]] std::string_view WithoutLeadingBlanks(std::string_view text);

// `text` without such bytes at both ends. Looks at all trailing ones, so do not call it for each
// value of a line.
[[nodiscard]] std::string_view TrimmedBlanks(std::string_view text);

// Whether it consists of such bytes only. Stops at the first other byte.
[[nodiscard]] bool IsBlank(std::string_view text);

}  // namespace sealkeeper

#endif
