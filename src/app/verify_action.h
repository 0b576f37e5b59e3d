// Checks an installed game against its signed catalogues and its runtime.conf.
#ifndef SEALKEEPER_APP_VERIFY_ACTION_H
#define SEALKEEPER_APP_VERIFY_ACTION_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// Verifies the game at `options.verifyDir` and logs a verdict for each file. Fails at once, logged,
// with `SealkeeperUsageError` when the directory does not resolve, `SealkeeperIOError` when it has
// no catalogues, `InitFailedWorkingDirectory`, as `HashCatalogue::ReadAndVerifyCatalogue` does for
// any catalogue, and with `CatalogueError` when the system fails to convert a path: there is no
// summary then. Otherwise returns the failure of runtime.conf (`CheckRuntimeConfiguration`)
// or, where that is none, of the files (`VerificationSummary::Result`). Nothing is ever written;
// the process's current directory is the game directory afterwards.
ResultCode RunVerifyAction(const CommandLineOptions& options);

}  // namespace sealkeeper

#endif
