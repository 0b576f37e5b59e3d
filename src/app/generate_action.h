// The default mode: makes the signed hash catalogue of a game or a mod, the copy of its
// certificate, and for a game runtime.conf.
#ifndef SEALKEEPER_APP_GENERATE_ACTION_H
#define SEALKEEPER_APP_GENERATE_ACTION_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// In configuration mode the process's current directory is the game directory afterwards. Failures
// are logged, but for three that deliberately show only in the code: the output directory's, the
// change of directory's, and a failed close of the certificate copy.
ResultCode RunGenerateAction(CommandLineOptions& options);

}  // namespace sealkeeper

#endif
