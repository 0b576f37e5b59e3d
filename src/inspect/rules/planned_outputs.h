// What a run of generate writes into the game.
#ifndef SEALKEEPER_INSPECT_RULES_PLANNED_OUTPUTS_H
#define SEALKEEPER_INSPECT_RULES_PLANNED_OUTPUTS_H

#include <optional>
#include <string>
#include <vector>

namespace sealkeeper {

// All paths are lexical ones; see lexical_path.h.
struct PlannedOutputs {
    // Made before the patterns are expanded; a parent comes before what it holds.
    std::vector<std::string> directories;
    // Written after that and before the walk, for the output name "base". That of a mod's
    // certificate is not, which the name does not tell.
    std::optional<std::string> runtimeConfiguration;
    // Written after the walk.
    std::string catalogue;
    std::string certificateCopy;
    // As generate hands it to the walk, to be left out.
    std::string pathToLeaveOut;
};

// For a run with the output name `outputName` and the absolute path of the game directory.
[[nodiscard]] PlannedOutputs PlanOutputs(const std::string& gameDirectory,
                                         const std::string& outputName);

}  // namespace sealkeeper

#endif
