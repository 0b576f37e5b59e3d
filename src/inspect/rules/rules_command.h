// The command "rules".
#ifndef SEALKEEPER_INSPECT_RULES_RULES_COMMAND_H
#define SEALKEEPER_INSPECT_RULES_RULES_COMMAND_H

#include "inspect/report/console.h"

namespace CLI {
class App;
}

namespace sealkeeper {

// Adds the command to `program`. When it runs it sets `status`: `kStatusWarning` where there is
// something to warn of, `kStatusError` where generate would fail or something cannot be read.
// Both references must outlive the parsing of the command line.
void AddRulesCommand(CLI::App& program, Console& console, int& status);

}  // namespace sealkeeper

#endif
