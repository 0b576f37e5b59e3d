// Finds what in the text of a configuration file is likely not what was meant. Nothing here looks
// at a game.
#ifndef SEALKEEPER_INSPECT_LINT_LINT_CONFIG_TEXT_H
#define SEALKEEPER_INSPECT_LINT_LINT_CONFIG_TEXT_H

#include <string_view>
#include <vector>

#include "inspect/lint/rule_warning.h"

namespace sealkeeper {

// Any bytes may be given. Sorted by place; what stands at no place comes first.
[[nodiscard]] std::vector<RuleWarning> LintConfigText(std::string_view text);

}  // namespace sealkeeper

#endif
