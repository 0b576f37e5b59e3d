// The paths by which include patterns lead to the outputs of a run.
#ifndef SEALKEEPER_INSPECT_RULES_SELECTED_OUTPUTS_H
#define SEALKEEPER_INSPECT_RULES_SELECTED_OUTPUTS_H

#include "inspect/rules/game_with_outputs.h"
#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// Renames outputs in `written`, which has the paths where they lie. An output that `selection` has
// by another path alone, through a link or "..", gets that path, made lexical. `game` has the
// outputs.
void NameAsSelected(const Selection& selection, const GameWithOutputs& game,
                    const PlannedOutputs& outputs, PlannedOutputs& written);

}  // namespace sealkeeper

#endif
