// The command `compare`: which entries two catalogues do not share.
#ifndef SEALKEEPER_INSPECT_SHOW_COMPARE_COMMAND_H
#define SEALKEEPER_INSPECT_SHOW_COMPARE_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// Its status is one of diff(1). `console` must live as long as `commandLine` is used.
void AddCompareCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
