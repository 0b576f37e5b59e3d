// Finds what verify does not report in a game.
#ifndef SEALKEEPER_INSPECT_CHECK_GAME_ADDITIONS_H
#define SEALKEEPER_INSPECT_CHECK_GAME_ADDITIONS_H

#include <vector>

#include "inspect/check/check_report.h"

namespace sealkeeper {

// The additions for `report`, sorted. The verification must have been completed and the current
// directory must be the game directory.
[[nodiscard]] std::vector<Addition> FindAdditions(const CheckReport& report);

}  // namespace sealkeeper

#endif
