// What verifying a game says nothing about, of a game that was verified.
#ifndef SEALKEEPER_INSPECT_CHECK_GAME_ADDITIONS_H
#define SEALKEEPER_INSPECT_CHECK_GAME_ADDITIONS_H

#include <vector>

#include "inspect/check/check_report.h"

namespace sealkeeper {

// The additions to `report`, whose verification came to its end, sorted. The game directory is the
// current one.
[[nodiscard]] std::vector<Addition> FindAdditions(const CheckReport& report);

}  // namespace sealkeeper

#endif
