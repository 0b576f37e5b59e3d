// Joins what a game holds with what generate would select of it.
#ifndef SEALKEEPER_INSPECT_RULES_JUDGED_FILES_H
#define SEALKEEPER_INSPECT_RULES_JUDGED_FILES_H

#include <vector>

#include "inspect/rules/game_inventory.h"
#include "inspect/rules/rules_report.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// Every file of `selection` as sealed, and every item of `inventory` that is not among them with
// the rule that left it or a directory above it out. A link that leads to sealed files is not left
// out, and stands for nothing. Sorted by path.
[[nodiscard]] std::vector<JudgedFile> JudgeFiles(const Selection& selection,
                                                 const std::vector<InventoryItem>& inventory);

}  // namespace sealkeeper

#endif
