// The command `check`: verifies a game and reports what verify does not mention.
#ifndef SEALKEEPER_INSPECT_CHECK_CHECK_COMMAND_H
#define SEALKEEPER_INSPECT_CHECK_CHECK_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// The exit status is `StatusOf` the report. `console` must outlive `commandLine`.
void AddCheckCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
