// The command `compare`: which entries two catalogues do not share.
#ifndef SEALKEEPER_INSPECT_SHOW_COMPARE_COMMAND_H
#define SEALKEEPER_INSPECT_SHOW_COMPARE_COMMAND_H

#include "inspect/report/console.h"

namespace CLI {
class App;
}  // namespace CLI

namespace sealkeeper {

// Adds the command to `program`. Where it is the one that is run, `status` is then its exit status,
// one of diff(1).
void AddCompareCommand(CLI::App& program, Console& console, int& status);

}  // namespace sealkeeper

#endif
