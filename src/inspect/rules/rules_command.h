// The command "rules".
#ifndef SEALKEEPER_INSPECT_RULES_RULES_COMMAND_H
#define SEALKEEPER_INSPECT_RULES_RULES_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// Its status is `kStatusWarning` where there is something to warn of, `kStatusError` where generate
// would fail or something cannot be read. `console` must live as long as `commandLine` is used.
void AddRulesCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
