// Warnings about the run's own outputs.
#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "config/config_names.h"
#include "inspect/report/name_list.h"
#include "inspect/rules/selection_lint.h"
#include "inspect/rules/warning_words.h"
#include "inspect/tree/lexical_path.h"

namespace sealkeeper {
namespace {

// The pattern that matches `path`. If none does, as in a walk over the whole game, the list of
// patterns.
TextPlace PlaceOfPatternTo(const std::string& path, const LintSubject& subject) {
    const auto& matches = subject.secondSelection.matches;
    if (!HasIncludes(subject.secondSelection.config)) {
        return subject.places.patternList;
    }
    for (std::size_t i = 0; i < matches.size(); ++i) {
        const bool leads =
            std::any_of(matches[i].begin(), matches[i].end(), [&path](const std::string& match) {
                const std::string lexical = LexicalPath(match);
                return lexical.empty() || lexical == path || path.starts_with(lexical + "/");
            });
        if (leads) {
            return subject.places.patterns.at(i);
        }
    }
    return subject.places.patternList;
}

// Whether the second run seals anything but outputs in the top-level folder `top`.
bool HasOtherFilesIn(const std::string& top, const LintSubject& subject) {
    const auto isOutput = [](const std::string& path, const PlannedOutputs& outputs) {
        return path == outputs.catalogue || path == outputs.certificateCopy ||
               path == outputs.runtimeConfiguration;
    };
    const auto& files = subject.secondSelection.files;
    return std::any_of(files.begin(), files.end(), [&](const SelectedFile& file) {
        const std::string path = LexicalPath(file.path);
        return path.starts_with(top + "/") && !isOutput(path, subject.outputs) &&
               !isOutput(path, subject.writtenOutputs);
    });
}

// A pattern that matches `path`: `path` itself, if a list in the configuration file can hold it.
std::string PatternFor(std::string path) {
    constexpr std::string_view kImpossibleInList = "\"]\n";
    for (char& character : path) {
        // A pattern takes a backslash for a slash.
        if (character == '\\' || kImpossibleInList.find(character) != std::string_view::npos) {
            character = '?';
        }
    }
    return path;
}

// What to leave out: the folders of the outputs, or the outputs alone if their folder holds other
// files.
std::string CureFor(const std::vector<std::string>& written, const LintSubject& subject) {
    std::set<std::string> names;
    for (const std::string& output : written) {
        const std::string top = output.substr(0, output.find('/'));
        names.insert(PatternFor(HasOtherFilesIn(top, subject) ? output : top));
    }
    const std::string list = QuotedForRules(names);
    // An empty include list also selects the whole game.
    return subject.places.patternKey == kExcludePathsKey
               ? "Add " + list + " to exclude_paths."
               : "Write in include_paths what to hash, but not " + list + ".";
}

// The outputs that a second run selects, each by the path that leads to it.
struct SelectedOutputs {
    // The catalogue and the copy of the certificate.
    std::vector<std::string> replaced;
    bool haveCatalogue = false;
    std::optional<std::string> runtimeConfiguration;
};

SelectedOutputs SelectedOutputsOf(const LintSubject& subject) {
    std::set<std::string> selected;
    for (const SelectedFile& file : subject.secondSelection.files) {
        selected.insert(LexicalPath(file.path));
    }
    // The second run may find an output directly, through a link or through "..".
    const auto find = [&selected](const std::string& asked, const std::string& written) {
        return selected.contains(asked)     ? std::optional(asked)
               : selected.contains(written) ? std::optional(written)
                                            : std::nullopt;
    };
    const PlannedOutputs& asked = subject.outputs;
    const PlannedOutputs& written = subject.writtenOutputs;
    SelectedOutputs outputs;
    const auto catalogue = find(asked.catalogue, written.catalogue);
    outputs.haveCatalogue = catalogue.has_value();
    for (const auto& path : {catalogue, find(asked.certificateCopy, written.certificateCopy)}) {
        if (path) {
            outputs.replaced.push_back(*path);
        }
    }
    if (asked.runtimeConfiguration) {
        outputs.runtimeConfiguration =
            find(*asked.runtimeConfiguration, written.runtimeConfiguration.value_or(std::string()));
    }
    return outputs;
}

}  // namespace

void LintOwnOutputs(const LintSubject& subject, RuleWarnings& warnings) {
    const SelectedOutputs selected = SelectedOutputsOf(subject);
    const std::vector<std::string>& replaced = selected.replaced;
    if (!replaced.empty()) {
        warnings.push_back(WarningAt(
            PlaceOfPatternTo(replaced.front(), subject),
            "A second run seals " + QuotedNameList(replaced, kMostNamed) +
                " of the first one and then replaces " + ByNumber(replaced.size(), "it", "them") +
                // A copy of the same certificate has the same bytes.
                (selected.haveCatalogue ? ", so verify fails."
                                        : ", so verify fails once another certificate is used."),
            CureFor(replaced, subject)));
    } else if (selected.runtimeConfiguration) {
        // It is written before it is hashed, so verify accepts it.
        warnings.push_back(
            WarningAt(PlaceOfPatternTo(*selected.runtimeConfiguration, subject),
                      "A run seals '" + *selected.runtimeConfiguration +
                          "', which it writes itself and which has a signature of its own.",
                      CureFor({*selected.runtimeConfiguration}, subject)));
    }
}

}  // namespace sealkeeper
