// Checks an installed game against its signed catalogues and its runtime.conf.
#ifndef SEALKEEPER_APP_VERIFY_ACTION_H
#define SEALKEEPER_APP_VERIFY_ACTION_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// Verifies the game at `options.verifyDir`. The process's current directory is the game directory
// afterwards. A file that fails does not end the run, a catalogue that fails does. Every failure is
// logged. Nothing is ever written.
ResultCode RunVerifyAction(CommandLineOptions& options);

}  // namespace sealkeeper

#endif
