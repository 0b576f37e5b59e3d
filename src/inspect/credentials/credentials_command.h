// The command `credentials`.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIALS_COMMAND_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIALS_COMMAND_H

#include "inspect/report/console.h"

namespace CLI {
class App;
}

namespace sealkeeper {

// Adds the command to `program`. When it is run it writes its report to `console` and sets
// `status`. All three must live as long as `program` is used.
void AddCredentialsCommand(CLI::App& program, Console& console, int& status);

}  // namespace sealkeeper

#endif
