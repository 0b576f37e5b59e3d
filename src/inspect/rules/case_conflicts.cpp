#include "inspect/rules/case_conflicts.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "inspect/rules/case_folding.h"
#include "inspect/tree/lexical_path.h"

namespace sealkeeper {
namespace {

using NamesInGame = std::map<std::string, NameFacts, std::less<>>;
using PathViews = std::vector<std::string_view>;
// Keyed by the path, of which the last component is case-folded.
using Conflicts = std::map<std::string, CaseConflict>;

void AddDirectoriesOf(std::string_view path, bool isSealed, NamesInGame& names) {
    for (path = ParentOf(path); !path.empty(); path = ParentOf(path)) {
        const auto [known, isNew] = names.try_emplace(std::string(path), NameFacts{true, isSealed});
        // What is known of a directory is known of those above it.
        if (!isNew && (known->second.isSealed || !isSealed)) {
            return;
        }
        known->second.isSealed = isSealed;
    }
}

// All files and directories.
NamesInGame NamesOf(const std::vector<JudgedFile>& files,
                    const std::vector<std::string>& directoriesWithoutFiles) {
    NamesInGame names;
    for (const std::string& path : directoriesWithoutFiles) {
        names.try_emplace(path, NameFacts{true, false});
        AddDirectoriesOf(path, false, names);
    }
    for (const JudgedFile& file : files) {
        const std::string path = LexicalPath(file.path);
        // The game directory itself has no name in the game.
        if (path.empty()) {
            continue;
        }
        if (file.leftOut == LeftOutReason::Unlistable) {
            // A pattern may seal a file in it all the same.
            names.try_emplace(path, NameFacts{true, false});
        } else {
            names[path] = {false, !file.leftOut};
        }
        AddDirectoriesOf(path, !file.leftOut, names);
    }
    return names;
}

// Directories alone become one directory. A sealed file must be concerned.
bool AreInConflict(const PathViews& paths, const NamesInGame& names) {
    const auto has = [&](bool NameFacts::*fact, bool wanted) {
        return std::any_of(paths.begin(), paths.end(), [&](std::string_view path) {
            return names.find(path)->second.*fact == wanted;
        });
    };
    return paths.size() > 1 && has(&NameFacts::isDirectory, false) &&
           has(&NameFacts::isSealed, true);
}

// Adds the conflict of `paths`, which are equal but for letter case, at the first component in
// which they differ. They do not differ in the bytes before `begin`, where a component begins.
void AddConflict(const PathViews& paths, std::size_t begin, const NamesInGame& names,
                 Conflicts& conflicts) {
    std::map<std::string_view, PathViews> byWay;
    for (const std::string_view path : paths) {
        byWay[path.substr(0, path.find('/', begin))].push_back(path);
    }
    const std::string_view first = byWay.begin()->first;
    if (byWay.size() > 1) {
        CaseConflict& conflict = conflicts[std::string(first.substr(0, begin)) +
                                           CaseFolded(std::string(first.substr(begin)))];
        for (const auto& [way, unused] : byWay) {
            conflict.names.insert(*names.find(way));
        }
        const bool areDirectories = paths.front().find('/', begin) != std::string_view::npos;
        conflict.clashesBelow += areDirectories ? 1U : 0U;
    }
    for (const auto& [way, samePaths] : byWay) {
        if (samePaths.size() > 1) {
            AddConflict(samePaths, way.size() + 1, names, conflicts);
        }
    }
}

}  // namespace

std::vector<CaseConflict> FindCaseConflicts(
    const std::vector<JudgedFile>& files, const std::vector<std::string>& directoriesWithoutFiles) {
    const NamesInGame names = NamesOf(files, directoriesWithoutFiles);
    std::map<std::string, PathViews> byFoldedCase;
    for (const auto& [path, unused] : names) {
        byFoldedCase[CaseFolded(path)].push_back(path);
    }
    Conflicts conflicts;
    for (const auto& [folded, paths] : byFoldedCase) {
        if (AreInConflict(paths, names)) {
            AddConflict(paths, 0, names, conflicts);
        }
    }
    std::vector<CaseConflict> found;
    for (auto& [unused, conflict] : conflicts) {
        found.push_back(std::move(conflict));
    }
    return found;
}

}  // namespace sealkeeper
