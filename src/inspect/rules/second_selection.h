// What a second run of generate would select: it finds the outputs of the first.
#ifndef SEALKEEPER_INSPECT_RULES_SECOND_SELECTION_H
#define SEALKEEPER_INSPECT_RULES_SECOND_SELECTION_H

#include <string>
#include <string_view>

#include "app/result_code.h"
#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

struct SecondSelection {
    // Complete.
    Selection selection;
    // The outputs of the first run with their files by where links lead: from the game directory,
    // or absolute where that is elsewhere.
    PlannedOutputs writtenOutputs;
};

// Selects once more by the rules of `configText`, by which the first run made its walk, in the
// current directory, whose absolute path without links is `gameDirectory`. Fails with
// `SealkeeperIOError`, logged, for a fault of the system, and where the game has changed so that no
// walk is made any more.
ResultCode SelectAgain(std::string_view configText, const std::string& gameDirectory,
                       const PlannedOutputs& outputs, SecondSelection& second);

}  // namespace sealkeeper

#endif
