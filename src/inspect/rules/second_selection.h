// Selects again as a second run of generate would, which finds the outputs of the first.
#ifndef SEALKEEPER_INSPECT_RULES_SECOND_SELECTION_H
#define SEALKEEPER_INSPECT_RULES_SECOND_SELECTION_H

#include <string>

#include "app/result_code.h"
#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

struct SecondSelection {
    // Always complete.
    Selection selection;
    // The first run's outputs, each by the lexical path by which an include pattern leads to it if
    // that alone selects it. Otherwise with links resolved: relative to the game directory, or
    // absolute if they are elsewhere.
    PlannedOutputs writtenOutputs;
};

// Selects again by the rules of `config`, with which the first selection was complete. The
// current directory has the absolute path `gameDirectory`, without links. Fails with
// `SealkeeperIOError`, logged, for a system error or if the game has changed so that the selection
// is no longer complete.
ResultCode SelectAgain(const ConfigFile& config, const std::string& gameDirectory,
                       const PlannedOutputs& outputs, SecondSelection& second);

}  // namespace sealkeeper

#endif
