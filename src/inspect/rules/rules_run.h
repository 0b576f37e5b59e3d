// Runs the rules and builds the report.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_RUN_H
#define SEALKEEPER_INSPECT_RULES_RULES_RUN_H

#include <string>

#include "app/result_code.h"
#include "inspect/rules/rules_report.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

struct RulesRequest {
    // Its path is the one to report.
    ConfigFile config;
    // Absolute, without links. It is also the current directory.
    std::string gameDirectory;
    // As in generate's -outname.
    std::string outputName;
};

// Sets `report` to what generate would do with the game, and to the warnings about the rules and
// the selection. Fails, logged, with `SealkeeperIOError` for a system error or if the game changes
// meanwhile, and with `CatalogueError` if the system cannot convert names. `report` must not be
// used then.
ResultCode RunRules(const RulesRequest& request, RulesReport& report);

}  // namespace sealkeeper

#endif
