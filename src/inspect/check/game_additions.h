// Finds what verify does not report in a game.
#ifndef SEALKEEPER_INSPECT_CHECK_GAME_ADDITIONS_H
#define SEALKEEPER_INSPECT_CHECK_GAME_ADDITIONS_H

#include <vector>

#include "inspect/check/check_report.h"

namespace sealkeeper {

// The additions for `report`, sorted. The verification must have been completed. `gameDirectory` is
// absolute, ends in '/' and is the current directory.
[[nodiscard]] std::vector<Addition> FindAdditions(const CheckReport& report,
                                                  const std::string& gameDirectory);

}  // namespace sealkeeper

#endif
