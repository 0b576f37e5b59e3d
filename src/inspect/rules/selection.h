// Selects files of a game with generate's own code.
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
#include "inspect/rules/no_utf8_names.h"
#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/rules_report.h"
#include "platform/file_system.h"

namespace sealkeeper {

// A file that would be sealed.
struct SelectedFile {
    // In the form that the walk uses.
    std::string path;
    std::uint64_t sizeBytes = 0;
    // `Missing` where this user may not look at it: a walk finds its name and its type alone.
    FileType type = FileType::Regular;
    // Whether this user may not read it. Set by `LookAtWhatIsRead`.
    bool isLocked = false;
};

// Whether files are selected by include patterns instead of a walk over the whole game.
[[nodiscard]] bool HasIncludes(const CatalogueConfig& config);

// The patterns of the list in use: include_paths, or exclude_paths if there are no includes.
[[nodiscard]] const std::vector<std::string>& PatternsInUse(const CatalogueConfig& config);

struct Selection {
    std::optional<Refusal> refusal;
    // Whether the walk was completed. Otherwise the members below may be incomplete.
    bool isComplete = false;
    CatalogueConfig config;
    // The matches of each pattern of the list in use, in file order.
    std::vector<PathSet> matches;
    // In the order of the walk. A file found in two ways is repeated.
    std::vector<SelectedFile> files;
    std::vector<SkippedPath> skipped;
    // What is read in place of files whose names are not UTF-8. Set by `LookAtWhatIsRead`.
    StandIn standIn;
};

// A configuration file and its contents.
struct ConfigFile {
    std::string path;
    std::string_view text;
};

// Selects by the rules of `config` in the current directory, which is the game directory. Adds
// to `game` what the run would have written at each step. Fails with `SealkeeperIOError`, logged,
// for a system error.
ResultCode SelectFiles(const ConfigFile& config, const PlannedOutputs& outputs,
                       GameWithOutputs& game, Selection& selection);

}  // namespace sealkeeper

#endif
