// Compares the contents of a game with what generate would select.
#ifndef SEALKEEPER_INSPECT_RULES_JUDGED_FILES_H
#define SEALKEEPER_INSPECT_RULES_JUDGED_FILES_H

#include <vector>

#include "inspect/rules/game_inventory.h"
#include "inspect/rules/rules_report.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// Every file in `selection` as sealed, and every other item of `inventory` with the rule that left
// out it or a directory above it. A link that leads to sealed files is neither. Directories that
// the walk could not list are left out even if `inventory` lacks them; those without files are not
// judged. Sorted by path.
[[nodiscard]] std::vector<JudgedFile> JudgeFiles(const Selection& selection,
                                                 std::vector<InventoryItem> inventory);

}  // namespace sealkeeper

#endif
