// The command `trust`.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_TRUST_COMMAND_H
#define SEALKEEPER_INSPECT_CREDENTIALS_TRUST_COMMAND_H

#include "inspect/command_line/command_line.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// The exit status is `StatusOf` the findings. `console` must outlive `commandLine`.
void AddTrustCommand(CommandLine& commandLine, Console& console);

}  // namespace sealkeeper

#endif
