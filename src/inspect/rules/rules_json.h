// The report of the rules as JSON.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_JSON_H
#define SEALKEEPER_INSPECT_RULES_RULES_JSON_H

#include <string>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// Members `configFile`, `gameDirectory`, `refusal` (null, or `code` and `message`), `files`,
// `warnings` and `totals`. JSON cannot hold a path that is not UTF-8, so its bytes are in a further
// member: `configFileHex`, `gameDirectoryHex`, and `pathHex` of a file.
[[nodiscard]] std::string RulesJson(const RulesReport& report);

// Why there is no report: `configFile` and `gameDirectory` as they were given, `failure` and
// `status`.
[[nodiscard]] std::string RulesFailureJson(const std::string& configFile,
                                           const std::string& gameDirectory,
                                           const std::string& failure);

}  // namespace sealkeeper

#endif
