// The command `check`: verifies a game and says what verifying leaves unsaid.
#ifndef SEALKEEPER_INSPECT_CHECK_CHECK_COMMAND_H
#define SEALKEEPER_INSPECT_CHECK_CHECK_COMMAND_H

#include "inspect/report/console.h"

namespace CLI {
class App;
}

namespace sealkeeper {

// Adds the command to `program`. Run, it sets `status` to `StatusOf` its report. `console` and
// `status` must outlive the parsing.
void AddCheckCommand(CLI::App& program, Console& console, int& status);

}  // namespace sealkeeper

#endif
