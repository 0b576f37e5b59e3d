// The command `show`: what a catalogue or a runtime.conf holds, field by field.
#ifndef SEALKEEPER_INSPECT_SHOW_SHOW_COMMAND_H
#define SEALKEEPER_INSPECT_SHOW_SHOW_COMMAND_H

#include "inspect/report/console.h"

namespace CLI {
class App;
}  // namespace CLI

namespace sealkeeper {

// Adds the command to `program`. Where it is the one that is run, `status` is then its exit status.
void AddShowCommand(CLI::App& program, Console& console, int& status);

}  // namespace sealkeeper

#endif
