// Wording shared by the warnings.
#ifndef SEALKEEPER_INSPECT_RULES_WARNING_WORDS_H
#define SEALKEEPER_INSPECT_RULES_WARNING_WORDS_H

#include <cstddef>
#include <set>
#include <string>

#include "config/text_place.h"
#include "inspect/lint/rule_warning.h"

namespace sealkeeper {

// For warnings about nothing in the configuration file.
inline constexpr TextPlace kNoPlace{0, 0};

// The most paths that a warning names.
inline constexpr std::size_t kMostNamed = 3;

[[nodiscard]] RuleWarning WarningAt(TextPlace place, std::string message, std::string cure);

// `singular` for one, else `plural`.
[[nodiscard]] const char* ByNumber(std::size_t count, const char* singular, const char* plural);

// The names as a list in the configuration file has them: "\"a\", \"b\"". They must hold only what
// a list can hold.
[[nodiscard]] std::string QuotedForRules(const std::set<std::string>& names);

}  // namespace sealkeeper

#endif
