#include "inspect/rules/selected_outputs.h"

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "inspect/tree/lexical_path.h"
#include "inspect/tree/path_below.h"

namespace sealkeeper {
namespace {

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

}  // namespace

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

}  // namespace sealkeeper
