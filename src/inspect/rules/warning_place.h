// The place of a warning about the rules.
#ifndef SEALKEEPER_INSPECT_RULES_WARNING_PLACE_H
#define SEALKEEPER_INSPECT_RULES_WARNING_PLACE_H

#include <string>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// "game.cfg:12:5", a form that editors can jump to; "game.cfg" if the warning has no place in it.
[[nodiscard]] std::string WarningPlace(const RulesReport& report, const RuleWarning& warning);

}  // namespace sealkeeper

#endif
