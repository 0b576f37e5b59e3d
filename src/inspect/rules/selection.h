// What generate would select of a game, by generate's own code.
#ifndef SEALKEEPER_INSPECT_RULES_SELECTION_H
#define SEALKEEPER_INSPECT_RULES_SELECTION_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/result_code.h"
#include "config/catalogue_config.h"
#include "config/file_collector.h"
#include "config/path_patterns.h"
#include "inspect/rules/game_with_outputs.h"
#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// A file that would be sealed.
struct SelectedFile {
    // As the walk forms it.
    std::string path;
    std::uint64_t sizeBytes = 0;
    bool isRegular = true;
};

// Whether files are found by patterns, and not by a walk over the whole game.
[[nodiscard]] bool HasIncludes(const CatalogueConfig& config);

// The patterns of the list in use: those of what to include, else of what to exclude.
[[nodiscard]] const std::vector<std::string>& PatternsInUse(const CatalogueConfig& config);

struct Selection {
    std::optional<Refusal> refusal;
    // Whether the walk over the game was made. What stands below may otherwise be missing.
    bool isComplete = false;
    CatalogueConfig config;
    // What each pattern of the list in use matches, in the order of the file.
    std::vector<PathSet> matches;
    // In the order of the walk. A file reached in two ways stands here twice.
    std::vector<SelectedFile> files;
    std::vector<SkippedPath> skipped;
};

// Selects by the rules of `configText` in the current directory, which is the game directory.
// `game` is given what the run would have written by the time it looks. Fails with
// `SealkeeperIOError`, logged, for a fault of the system.
ResultCode SelectFiles(std::string_view configText, const PlannedOutputs& outputs,
                       GameWithOutputs& game, Selection& selection);

}  // namespace sealkeeper

#endif
