#include "inspect/rules/second_selection.h"

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "app/console_log.h"
#include "inspect/rules/game_with_outputs.h"
#include "inspect/tree/lexical_path.h"
#include "inspect/tree/path_below.h"

namespace sealkeeper {
namespace {

void AddOutputs(const PlannedOutputs& outputs, GameWithOutputs& game) {
    for (const std::string& directory : outputs.directories) {
        game.AddDirectory(directory);
    }
    game.AddFile(outputs.catalogue, 0);
    game.AddFile(outputs.certificateCopy, 0);
    if (outputs.runtimeConfiguration) {
        game.AddFile(*outputs.runtimeConfiguration, 0);
    }
}

PlannedOutputs WrittenOutputs(const PlannedOutputs& outputs, const GameWithOutputs& game) {
    PlannedOutputs written = outputs;
    written.catalogue = game.LocationOf(outputs.catalogue);
    written.certificateCopy = game.LocationOf(outputs.certificateCopy);
    if (outputs.runtimeConfiguration) {
        written.runtimeConfiguration = game.LocationOf(*outputs.runtimeConfiguration);
    }
    return written;
}

using Paths = std::set<std::string>;

// What an include pattern matches, and where that lies.
struct Match {
    std::string lexicalPath;
    std::string resolvedPath;
};

std::vector<Match> ResolvedMatches(const Selection& selection, const GameWithOutputs& game) {
    // Patterns overlap.
    Paths distinct;
    for (const PathSet& matches : selection.matches) {
        distinct.insert(matches.begin(), matches.end());
    }
    std::vector<Match> resolved;
    for (const std::string& match : distinct) {
        if (auto path = game.Resolve(match)) {
            resolved.push_back({LexicalPath(match), std::move(*path)});
        }
    }
    return resolved;
}

// The selected path on which a match leads to `output`, a path without links. A walk below a match
// follows none.
std::optional<std::string> SelectedPathTo(const std::string& output,
                                          const std::vector<Match>& matches,
                                          const Paths& selected) {
    for (const Match& match : matches) {
        std::string path = match.lexicalPath;
        if (match.resolvedPath != output) {
            const auto rest = PathBelow(output, match.resolvedPath);
            if (!rest) {
                continue;
            }
            path.append("/").append(*rest);
            path = LexicalPath(path);
        }
        if (selected.contains(path)) {
            return path;
        }
    }
    return std::nullopt;
}

// Sets in `written` the paths of those outputs that are selected only through a link or "..".
void NameAsSelected(const Selection& selection, const GameWithOutputs& game,
                    const PlannedOutputs& outputs, PlannedOutputs& written) {
    // A walk over the whole game follows no links.
    if (!HasIncludes(selection.config)) {
        return;
    }
    Paths selected;
    for (const SelectedFile& file : selection.files) {
        selected.insert(LexicalPath(file.path));
    }
    const std::vector<Match> matches = ResolvedMatches(selection, game);
    const auto name = [&](const std::string& asked, std::string& path) {
        const auto resolved = game.Resolve("./" + asked);
        if (selected.contains(asked) || selected.contains(path) || !resolved) {
            return;
        }
        path = SelectedPathTo(*resolved, matches, selected).value_or(path);
    };
    name(outputs.catalogue, written.catalogue);
    name(outputs.certificateCopy, written.certificateCopy);
    if (outputs.runtimeConfiguration) {
        name(*outputs.runtimeConfiguration, *written.runtimeConfiguration);
    }
}

}  // namespace

ResultCode SelectAgain(const ConfigFile& config, const std::string& gameDirectory,
                       const PlannedOutputs& outputs, SecondSelection& second) {
    second = SecondSelection();
    GameWithOutputs game(gameDirectory);
    AddOutputs(outputs, game);
    second.writtenOutputs = WrittenOutputs(outputs, game);
    if (const ResultCode code = SelectFiles(config, outputs, game, second.selection);
        code != ResultCode::Ok) {
        return code;
    }
    if (!second.selection.isComplete) {
        Log(LogLevel::Error, "The game has changed while it was looked at.\n");
        return ResultCode::SealkeeperIOError;
    }
    NameAsSelected(second.selection, game, outputs, second.writtenOutputs);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
