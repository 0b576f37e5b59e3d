// What a run of generate writes into the game.
#ifndef SEALKEEPER_INSPECT_RULES_PLANNED_OUTPUTS_H
#define SEALKEEPER_INSPECT_RULES_PLANNED_OUTPUTS_H

#include <optional>
#include <string>
#include <vector>

namespace sealkeeper {

struct PlannedOutputs {
    // Lexical paths; see lexical_path.h. Made before the patterns are expanded; a parent comes
    // before what it holds.
    std::vector<std::string> directories;
    // Written after the directories and before the walk, for the output name "base". Whether the
    // certificate is one of a mod, for which nothing is written, does not show in the name.
    std::optional<std::string> runtimeConfiguration;
    // Written after the walk.
    std::string catalogue;
    std::string certificateCopy;
    // No lexical path: as generate hands it to the walk, to be left out.
    std::string pathToLeaveOut;
};

// For a run with the output name `outputName` and the absolute path of the game directory. The
// paths of the files are lexical ones, too.
[[nodiscard]] PlannedOutputs PlanOutputs(const std::string& gameDirectory,
                                         const std::string& outputName);

}  // namespace sealkeeper

#endif
