// Makes the report of the rules.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_RUN_H
#define SEALKEEPER_INSPECT_RULES_RULES_RUN_H

#include <string>
#include <string_view>

#include "app/result_code.h"
#include "inspect/rules/rules_report.h"

namespace sealkeeper {

struct RulesRequest {
    // Absolute.
    std::string configFile;
    // What it holds.
    std::string_view configText;
    // Absolute; the current directory.
    std::string gameDirectory;
    // As for generate.
    std::string outputName;
};

// Sets `report` to what generate would make of the game, and what the rules and the selection are
// to be warned of. Fails with `SealkeeperIOError`, logged, for a fault of the system.
ResultCode RunRules(const RulesRequest& request, RulesReport& report);

}  // namespace sealkeeper

#endif
