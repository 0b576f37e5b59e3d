// The report of the rules for programs.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_JSON_H
#define SEALKEEPER_INSPECT_RULES_RULES_JSON_H

#include <string>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// Members `configFile`, `gameDirectory`, `refusal` (null, or `code` and `message`), `files`,
// `warnings` and `totals`. Where a path is no UTF-8, which JSON cannot hold, a further member has
// its bytes: `configFileHex`, `gameDirectoryHex`, and `pathHex` of a file.
[[nodiscard]] std::string RulesJson(const RulesReport& report);

}  // namespace sealkeeper

#endif
