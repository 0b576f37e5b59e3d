// The files that a run of generate writes into the game.
#ifndef SEALKEEPER_INSPECT_RULES_PLANNED_OUTPUTS_H
#define SEALKEEPER_INSPECT_RULES_PLANNED_OUTPUTS_H

#include <optional>
#include <string>
#include <vector>

namespace sealkeeper {

struct PlannedOutputs {
    // Lexical paths; see lexical_path.h. Created before the patterns are expanded, parents first.
    std::vector<std::string> directories;
    // Written after the directories and before the walk, only for the output name "base". A mod's
    // certificate prevents it, which the name does not show.
    std::optional<std::string> runtimeConfiguration;
    // Written after the walk.
    std::string catalogue;
    std::string certificateCopy;
    // Not lexical: the path that generate tells the walk to leave out.
    std::string pathToLeaveOut;
};

// For a run with `outputName`, given the absolute path of the game directory. The paths of files
// are lexical, too.
[[nodiscard]] PlannedOutputs PlanOutputs(const std::string& gameDirectory,
                                         const std::string& outputName);

}  // namespace sealkeeper

#endif
