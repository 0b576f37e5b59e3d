// A selection to be judged by the rules of selection_lint.h, one at a time.
#ifndef SEALKEEPER_TESTS_INSPECT_RULES_LINTED_SELECTION_H
#define SEALKEEPER_TESTS_INSPECT_RULES_LINTED_SELECTION_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "inspect/rules/selection_lint.h"

namespace sealkeeper::test {

// The input of a rule, for each test to fill.
struct LintedSelection {
    Selection selection;
    Selection second;
    PlannedOutputs outputs;
    RulePlaces places;
    std::vector<JudgedFile> files;

    // Sets patterns, one per line, and their matches without "./".
    void Match(const std::vector<std::pair<std::string, std::vector<std::string>>>& patterns,
               bool areIncludes = true) {
        CatalogueConfig& config = selection.config;
        for (const auto& [pattern, matched] : patterns) {
            (areIncludes ? config.includePaths : config.excludePaths).push_back(pattern);
            PathSet paths;
            for (const std::string& path : matched) {
                paths.insert("./" + path);
            }
            selection.matches.push_back(paths);
            places.patterns.push_back({places.patterns.size() + 1, 1});
        }
        second.config = config;
        second.matches = selection.matches;
    }

    void Select(const std::vector<std::string>& paths) {
        for (const std::string& path : paths) {
            selection.files.push_back({"./" + path});
        }
    }

    void LeaveOut(LeftOutReason reason, const std::string& path, std::uint64_t sizeBytes = 0) {
        files.push_back({path, sizeBytes, reason});
    }

    void Seal(const std::string& path) { files.push_back({path, 0, std::nullopt}); }
};

// "line message / cure" for each warning; the line is left out if it has none.
template <typename Rule>
std::vector<std::string> ToldBy(Rule rule, const LintedSelection& subject) {
    RuleWarnings warnings;
    static_cast<void>(rule(LintSubject{subject.selection,
                                       subject.second,
                                       subject.outputs,
                                       subject.outputs,
                                       subject.places,
                                       subject.files,
                                       {}},
                           warnings));
    std::vector<std::string> told;
    for (const RuleWarning& warning : warnings) {
        told.push_back((warning.line == 0 ? "" : std::to_string(warning.line) + " ") +
                       warning.message + " / " + warning.cure);
    }
    return told;
}

}  // namespace sealkeeper::test

#endif
