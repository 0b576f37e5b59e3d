// The command `rules`.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_COMMAND_H
#define SEALKEEPER_INSPECT_RULES_RULES_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// The exit status is `kStatusWarning` for warnings, and `kStatusError` if generate would fail or
// something cannot be read. `console` must outlive `commandLine`.
void AddRulesCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
