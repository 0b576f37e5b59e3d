// The command `check`: verifies a game and says what verifying leaves unsaid.
#ifndef SEALKEEPER_INSPECT_CHECK_CHECK_COMMAND_H
#define SEALKEEPER_INSPECT_CHECK_CHECK_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// Its status is `StatusOf` its report. `console` must live as long as `commandLine` is used.
void AddCheckCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
