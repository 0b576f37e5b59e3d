// The command `trust`.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_TRUST_COMMAND_H
#define SEALKEEPER_INSPECT_CREDENTIALS_TRUST_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// Its status is `StatusOf` its findings. `console` must live as long as `commandLine` is used.
void AddTrustCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
