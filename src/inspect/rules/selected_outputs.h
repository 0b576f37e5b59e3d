// The paths by which include patterns lead to the outputs of a run.
#ifndef SEALKEEPER_INSPECT_RULES_SELECTED_OUTPUTS_H
#define SEALKEEPER_INSPECT_RULES_SELECTED_OUTPUTS_H

#include "inspect/rules/game_with_outputs.h"
#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// Sets in `written`, the outputs by the paths where they lie, the paths of those that `selection`
// has only by a link or "..": each becomes the lexical path by which it is selected. `game` has the
// outputs.
void NameAsSelected(const Selection& selection, const GameWithOutputs& game,
                    const PlannedOutputs& outputs, PlannedOutputs& written);

}  // namespace sealkeeper

#endif
