// Where a warning of the rules stands.
#ifndef SEALKEEPER_INSPECT_RULES_WARNING_PLACE_H
#define SEALKEEPER_INSPECT_RULES_WARNING_PLACE_H

#include <string>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// "game.cfg:12:5", the form that editors jump to; "game.cfg" for what stands at no place of it.
[[nodiscard]] std::string WarningPlace(const RulesReport& report, const RuleWarning& warning);

}  // namespace sealkeeper

#endif
