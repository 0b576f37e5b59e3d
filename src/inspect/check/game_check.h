// Checks an installed game.
#ifndef SEALKEEPER_INSPECT_CHECK_GAME_CHECK_H
#define SEALKEEPER_INSPECT_CHECK_GAME_CHECK_H

#include "app/command_line_options.h"
#include "inspect/check/check_report.h"

namespace sealkeeper {

// Verifies the game at `verifyDir` of `options` as the action verify does, with a progress bar.
// Then looks for what verify does not report. Changes the current directory to the game directory.
// Running out of memory ends the verification like any other failure.
[[nodiscard]] CheckReport CheckGame(const CommandLineOptions& options);

}  // namespace sealkeeper

#endif
