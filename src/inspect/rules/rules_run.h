// Makes the report of the rules.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_RUN_H
#define SEALKEEPER_INSPECT_RULES_RULES_RUN_H

#include <string>
#include <string_view>

#include "app/result_code.h"
#include "inspect/rules/rules_report.h"

namespace sealkeeper {

struct RulesRequest {
    // Its name as it is to be reported.
    std::string configFile;
    // What it holds.
    std::string_view configText;
    // Absolute, without links; the current directory.
    std::string gameDirectory;
    // As for generate.
    std::string outputName;
};

// Sets `report` to what generate would make of the game, and what the rules and the selection are
// to be warned of. Fails, logged, and `report` is not to be used then: with `SealkeeperIOError` for
// a fault of the system or a game that changes meanwhile, with `CatalogueError` where the system
// cannot convert names.
ResultCode RunRules(const RulesRequest& request, RulesReport& report);

}  // namespace sealkeeper

#endif
