// Warnings about files that are sealed more than once.
#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "inspect/report/name_list.h"
#include "inspect/report/number_text.h"
#include "inspect/rules/path_way.h"
#include "inspect/rules/pattern_reach.h"
#include "inspect/rules/selection_lint.h"
#include "inspect/rules/warning_words.h"
#include "inspect/tree/lexical_path.h"

namespace sealkeeper {
namespace {

// Paths that are sealed more than once, keyed by the patterns that lead to them.
using RepeatedFiles = std::map<std::vector<std::size_t>, std::vector<std::string>>;

RepeatedFiles FindRepeatedFiles(const PatternReach& reach) {
    RepeatedFiles repeated;
    for (const auto& [path, count] : reach.Counts()) {
        if (count > 1) {
            repeated[reach.LeadingTo(path)].push_back(path);
        }
    }
    return repeated;
}

// What to do about files to which these patterns lead. No pattern may be taken out that is the only
// one to seal something.
std::string CureForRepetition(const std::vector<std::size_t>& numbers, const PatternReach& reach,
                              const std::vector<std::string>& patterns) {
    if (numbers.size() < 2) {
        return "Write a pattern that leads to each file by one path: more than once, a file only takes longer to hash and verify.";
    }
    const auto enough = reach.ThatSealsAllOf(numbers);
    if (!enough) {
        return "Write patterns that do not overlap, and that still lead to every file: more than once, a file only takes longer to hash and verify.";
    }
    std::vector<std::string> needless;
    for (const std::size_t number : numbers) {
        if (number != *enough) {
            needless.push_back(patterns[number]);
        }
    }
    return ByNumber(needless.size(), "Take out the pattern ", "Take out the patterns ") +
           QuotedNameList(needless) + ": '" + patterns[*enough] + "' seals all of " +
           ByNumber(needless.size(), "it", "them") +
           ", and a file is hashed and verified once for each.";
}

// Where `match` lies if no link stands on the way. `game` is the absolute game directory.
std::string PathWithoutLinks(const std::string& match, const std::string& game) {
    const std::string path = LexicalPath(match);
    return path.empty() ? game : game + "/" + path;
}

// Sets `hasLinks` to whether a link stands on the way to what the patterns match.
ResultCode LookForLinks(const Selection& selection, bool& hasLinks) {
    hasLinks = false;
    std::string game;
    if (const ResultCode code = ResolveInGame(".", game); code != ResultCode::Ok) {
        return code;
    }
    // Patterns overlap, and to resolve a path takes a system call for each of its components.
    std::unordered_set<std::string_view> asked;
    for (const PathSet& matches : selection.matches) {
        for (const std::string& match : matches) {
            if (!asked.insert(match).second) {
                continue;
            }
            std::string resolved;
            if (const ResultCode code = ResolveInGame(match, resolved); code != ResultCode::Ok) {
                return code;
            }
            if (resolved != PathWithoutLinks(match, game)) {
                hasLinks = true;
                return ResultCode::Ok;
            }
        }
    }
    return ResultCode::Ok;
}

using Names = std::set<std::string>;
// The names of each sealed file, by where it lies.
using NamesByPlace = std::map<std::string, Names>;

// A walk follows no links, so without one in what the patterns match there is nothing to find.
ResultCode FindNamesOfLinkedFiles(const Selection& selection, NamesByPlace& names) {
    bool hasLinks = false;
    if (HasIncludes(selection.config)) {
        if (const ResultCode code = LookForLinks(selection, hasLinks); code != ResultCode::Ok) {
            return code;
        }
    }
    if (!hasLinks) {
        return ResultCode::Ok;
    }
    for (const SelectedFile& file : selection.files) {
        std::string resolved;
        if (const ResultCode code = ResolveInGame(file.path, resolved); code != ResultCode::Ok) {
            return code;
        }
        if (!resolved.empty()) {
            names[resolved].insert(LexicalPath(file.path));
        }
    }
    return ResultCode::Ok;
}

// Whether a link leads from one of the names to where the file lies. If none does, they differ in
// parent components alone.
bool HaveLink(const Names& names, const std::string& resolved, const std::string& game) {
    return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
        return "/" + LexicalPath(game + "/" + name) != resolved;
    });
}

// How files come to be sealed under several names.
struct Renaming {
    // The indices of the patterns that lead to them.
    std::vector<std::size_t> patterns;
    bool isByLink = false;

    bool operator<(const Renaming& other) const {
        return std::tie(patterns, isByLink) < std::tie(other.patterns, other.isByLink);
    }
};

// The names of files that are sealed under several. `game` is the absolute game directory.
std::map<Renaming, std::vector<Names>> RenamedFiles(const Selection& selection,
                                                    const NamesByPlace& namesByPlace,
                                                    const std::string& game) {
    const PatternReach reach(selection);
    std::map<Renaming, std::vector<Names>> renamed;
    for (const auto& [resolved, names] : namesByPlace) {
        if (names.size() < 2) {
            continue;
        }
        std::set<std::size_t> numbers;
        for (const std::string& name : names) {
            const auto leading = reach.LeadingTo(name);
            numbers.insert(leading.begin(), leading.end());
        }
        renamed[{{numbers.begin(), numbers.end()}, HaveLink(names, resolved, game)}].push_back(
            names);
    }
    return renamed;
}

// " (patterns 'a' and 'b')", those of these numbers; empty without any.
std::string InParentheses(const std::vector<std::size_t>& numbers, const CatalogueConfig& config) {
    std::vector<std::string> patterns;
    patterns.reserve(numbers.size());
    for (const std::size_t number : numbers) {
        patterns.push_back(PatternsInUse(config)[number]);
    }
    return patterns.empty() ? ""
                            : ByNumber(patterns.size(), " (pattern ", " (patterns ") +
                                  QuotedNameList(patterns, kMostNamed) + ")";
}

// Of the last of these patterns.
TextPlace LastPlace(const std::vector<std::size_t>& numbers, const RulePlaces& places) {
    return numbers.empty() ? kNoPlace : places.patterns.at(numbers.back());
}

}  // namespace

void LintRepeatedFiles(const LintSubject& subject, RuleWarnings& warnings) {
    const PatternReach reach(subject.selection);
    const CatalogueConfig& config = subject.selection.config;
    for (const auto& [numbers, files] : FindRepeatedFiles(reach)) {
        warnings.push_back(
            WarningAt(LastPlace(numbers, subject.places),
                      QuotedNameList(files, kMostNamed) + ByNumber(files.size(), " is", " are") +
                          " sealed more than once, because several paths lead there" +
                          InParentheses(numbers, config) + ".",
                      CureForRepetition(numbers, reach, PatternsInUse(config))));
    }
}

ResultCode LintRenamedFiles(const LintSubject& subject, RuleWarnings& warnings) {
    NamesByPlace namesByPlace;
    if (const ResultCode code = FindNamesOfLinkedFiles(subject.selection, namesByPlace);
        code != ResultCode::Ok) {
        return code;
    }
    if (namesByPlace.empty()) {
        return ResultCode::Ok;
    }
    std::string game;
    if (const ResultCode code = ResolveInGame(".", game); code != ResultCode::Ok) {
        return code;
    }
    for (const auto& [renaming, files] : RenamedFiles(subject.selection, namesByPlace, game)) {
        const Names& names = files.front();
        const std::size_t others = files.size() - 1;
        warnings.push_back(WarningAt(
            LastPlace(renaming.patterns, subject.places),
            QuotedNameList({names.begin(), names.end()}, kMostNamed) +
                (renaming.isByLink
                     ? " are one file because of a link, and it is sealed under each name"
                     : " are one file, and it is sealed more than once, because several paths lead there") +
                (others == 0
                     ? ""
                     : ByNumber(others, ", as is ", ", as are ") + CountText(others, "more file")) +
                InParentheses(renaming.patterns, subject.selection.config) + ".",
            "Write patterns that lead to each file by one name only: it is hashed and verified once for each."));
    }
    return ResultCode::Ok;
}

}  // namespace sealkeeper
