// The check of an installed game.
#ifndef SEALKEEPER_INSPECT_CHECK_GAME_CHECK_H
#define SEALKEEPER_INSPECT_CHECK_GAME_CHECK_H

#include "app/command_line_options.h"
#include "inspect/check/check_report.h"

namespace sealkeeper {

// Verifies the game at `verifyDir` of `options` as the action of the same name does, with a
// progress bar, and looks for what that says nothing about. The process's current directory is the
// game directory afterwards. Lack of memory ends the verification as anything else does.
[[nodiscard]] CheckReport CheckGame(const CommandLineOptions& options);

}  // namespace sealkeeper

#endif
