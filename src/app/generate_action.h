// The default mode: makes the signed hash catalogue of a game or a mod, the copy of its
// certificate, and for a game runtime.conf.
#ifndef SEALKEEPER_APP_GENERATE_ACTION_H
#define SEALKEEPER_APP_GENERATE_ACTION_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// Runs the mode and returns its result code. When a configuration file is used, the game directory
// is the current directory of the process afterwards. Failures are logged, except three that
// deliberately show only in the result code: the output directory cannot be created, the current
// directory cannot be changed, the certificate copy cannot be closed.
ResultCode RunGenerateAction(CommandLineOptions& options);

}  // namespace sealkeeper

#endif
