#include "inspect/rules/pattern_reach.h"

#include <algorithm>
#include <utility>

#include "inspect/tree/parent_component.h"

namespace sealkeeper {
namespace {

// Calls `visit` with `path` and each directory above it, the game itself being "". Stops once it
// returns true, and then returns true.
template <typename Visit>
bool AnyOnTheWayTo(std::string_view path, Visit visit) {
    while (!path.empty()) {
        if (visit(path)) {
            return true;
        }
        path = ParentOf(path);
    }
    return visit(path);
}

}  // namespace

PatternReach::PatternReach(const Selection& selection) {
    PathSet distinct;
    for (const PathSet& matches : selection.matches) {
        LexicalPaths& paths = matches_.emplace_back();
        bool goesBack = false;
        for (const std::string& match : matches) {
            std::string path = LexicalPath(match);
            goesBack = goesBack || HasParentComponent(match);
            // What several patterns match is walked once.
            if (distinct.insert(match).second) {
                ++spellings_[path];
            }
            paths.insert(std::move(path));
        }
        goesBack_.push_back(goesBack);
    }
    for (const SelectedFile& file : selection.files) {
        ++counts_[LexicalPath(file.path)];
    }
}

bool PatternReach::Leads(std::size_t pattern, std::string_view path) const {
    return AnyOnTheWayTo(
        path, [&matches = matches_[pattern]](std::string_view at) { return matches.contains(at); });
}

std::vector<std::size_t> PatternReach::LeadingTo(std::string_view path) const {
    std::vector<std::size_t> patterns;
    for (std::size_t i = 0; i < matches_.size(); ++i) {
        if (Leads(i, path)) {
            patterns.push_back(i);
        }
    }
    return patterns;
}

// How often `file` is sealed if no walk leaves it out.
std::size_t PatternReach::WaysTo(std::string_view file) const {
    std::size_t ways = 0;
    AnyOnTheWayTo(file, [&](std::string_view at) {
        const auto found = spellings_.find(at);
        ways += found == spellings_.end() ? 0 : found->second;
        return false;
    });
    return ways;
}

// Whether the pattern alone seals the sealed `file`. A pattern that names a file always does. A
// walk may leave it out, for example by its extension, unless every way to it was taken.
bool PatternReach::Seals(std::size_t pattern, std::string_view file) const {
    return matches_[pattern].contains(file) ||
           (Leads(pattern, file) && counts_.find(file)->second == WaysTo(file));
}

// Whether the pattern seals what is sealed at `match` and below.
bool PatternReach::SealsAllAt(std::size_t pattern, const std::string& match) const {
    if (!Leads(pattern, match)) {
        return false;
    }
    // Names such as "a-b" may stand between "a" and what is below it.
    if (counts_.contains(match) && !Seals(pattern, match)) {
        return false;
    }
    const std::string below = match.empty() ? "" : match + "/";
    const auto begin = counts_.lower_bound(below);
    const auto end = std::find_if(begin, counts_.end(), [&below](const auto& file) {
        return !file.first.starts_with(below);
    });
    return std::all_of(begin, end, [&](const auto& file) { return Seals(pattern, file.first); });
}

bool PatternReach::SealsAllOf(std::size_t pattern, std::size_t other) const {
    const LexicalPaths& matches = matches_[other];
    return std::all_of(matches.begin(), matches.end(),
                       [&](const std::string& match) { return SealsAllAt(pattern, match); });
}

std::optional<std::size_t> PatternReach::ThatSealsAllOf(
    const std::vector<std::size_t>& patterns) const {
    if (std::any_of(patterns.begin(), patterns.end(),
                    [this](std::size_t pattern) { return goesBack_[pattern]; })) {
        return std::nullopt;
    }
    const auto found = std::find_if(patterns.begin(), patterns.end(), [&](std::size_t pattern) {
        return std::all_of(patterns.begin(), patterns.end(), [&](std::size_t other) {
            return other == pattern || SealsAllOf(pattern, other);
        });
    });
    return found == patterns.end() ? std::nullopt : std::optional(*found);
}

}  // namespace sealkeeper
