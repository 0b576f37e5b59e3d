// The command `show`: what a catalogue or a runtime.conf holds, field by field.
#ifndef SEALKEEPER_INSPECT_SHOW_SHOW_COMMAND_H
#define SEALKEEPER_INSPECT_SHOW_SHOW_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// The exit status is `StatusOf` the file shown. `console` must outlive `commandLine`.
void AddShowCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
