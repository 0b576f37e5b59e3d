// Finds likely mistakes in the text of a configuration file. It needs no game.
#ifndef SEALKEEPER_INSPECT_LINT_LINT_CONFIG_TEXT_H
#define SEALKEEPER_INSPECT_LINT_LINT_CONFIG_TEXT_H

#include <string_view>
#include <vector>

#include "inspect/lint/rule_warning.h"

namespace sealkeeper {

// `text` may hold any bytes. The result is sorted by place; warnings without a place come first.
[[nodiscard]] std::vector<RuleWarning> LintConfigText(std::string_view text);

}  // namespace sealkeeper

#endif
