// The command `compare`: the differences between two catalogues.
#ifndef SEALKEEPER_INSPECT_SHOW_COMPARE_COMMAND_H
#define SEALKEEPER_INSPECT_SHOW_COMPARE_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// The exit status is that of diff(1). `console` must outlive `commandLine`.
void AddCompareCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
