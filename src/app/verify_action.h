// Checks an installed game against its signed catalogues and its runtime.conf.
#ifndef SEALKEEPER_APP_VERIFY_ACTION_H
#define SEALKEEPER_APP_VERIFY_ACTION_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// Verifies the game at `options.verifyDir` and logs a verdict for each file. When a step of
// `GameVerification` fails, that failure is returned at once, logged, and there is no summary.
// Otherwise returns `GameVerification::Result`. Writes no file. The game directory is the current
// directory of the process afterwards.
ResultCode RunVerifyAction(const CommandLineOptions& options);

}  // namespace sealkeeper

#endif
