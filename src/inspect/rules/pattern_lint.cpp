// Warnings about patterns and extensions.
#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "inspect/report/name_list.h"
#include "inspect/report/number_text.h"
#include "inspect/report/utf8_text.h"
#include "inspect/rules/case_folding.h"
#include "inspect/rules/path_way.h"
#include "inspect/rules/selection_lint.h"
#include "inspect/rules/warning_words.h"
#include "inspect/tree/lexical_path.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

std::string_view ExtensionIn(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot);
}

// Sealed files whose extensions differ in letter case at most.
struct FilesOfExtension {
    std::set<std::string> spellings;
    std::size_t count = 0;
    // The first of them by its path.
    std::string example;
};

// What include patterns match themselves. No extension leaves that out.
std::unordered_set<std::string_view> NamedPaths(const Selection& selection) {
    std::unordered_set<std::string_view> named;
    if (HasIncludes(selection.config)) {
        for (const PathSet& matches : selection.matches) {
            named.insert(matches.begin(), matches.end());
        }
    }
    return named;
}

// The sealed files that a walk finds, by their extension without letter case.
std::map<std::string, FilesOfExtension> FilesByExtension(const Selection& selection) {
    const std::unordered_set<std::string_view> named = NamedPaths(selection);
    std::map<std::string, FilesOfExtension> byExtension;
    for (const SelectedFile& file : selection.files) {
        std::string extension(ExtensionIn(file.path));
        // A final dot alone begins no extension.
        if (extension.size() < 2 || named.contains(file.path)) {
            continue;
        }
        FilesOfExtension& files = byExtension[CaseFolded(extension)];
        files.spellings.insert(std::move(extension));
        std::string path = LexicalPath(file.path);
        // The walk has no order of its own.
        if (++files.count == 1 || path < files.example) {
            files.example = std::move(path);
        }
    }
    return byExtension;
}

RuleWarning WarningOfCase(TextPlace place, const std::string& extension,
                          const FilesOfExtension& files) {
    const std::string subject = files.count == 1 ? "'" + files.example + "' has"
                                                 : CountText(files.count, "file") + ", such as '" +
                                                       files.example + "', have";
    return WarningAt(place,
                     subject + " the extension '" + extension + "' in another letter case and " +
                         ByNumber(files.count, "is", "are") + " not left out.",
                     "Letter case counts: write " +
                         (files.spellings.size() > kMostNamed ? "each spelling in use"
                                                              : QuotedForRules(files.spellings)) +
                         ", too, if such files are to be left out.");
}

}  // namespace

ResultCode LintUnmatchedPatterns(const LintSubject& subject, RuleWarnings& warnings) {
    const auto& patterns = PatternsInUse(subject.selection.config);
    const char* const cure = HasIncludes(subject.selection.config)
                                 ? "Correct it or take it out: what it was meant for is not sealed."
                                 : "Correct it or take it out: what it was meant for is sealed.";
    for (std::size_t i = 0; i < subject.selection.matches.size(); ++i) {
        // A pattern that only matches outputs still to be written is no mistake.
        if (!subject.selection.matches[i].empty() || !subject.secondSelection.matches[i].empty()) {
            continue;
        }
        const std::string message = "The pattern '" + patterns[i] + "' matches nothing";
        const TextPlace place = subject.places.patterns.at(i);
        std::optional<std::string> closed;
        if (const ResultCode code = FindClosedDirectory(patterns[i], closed);
            code != ResultCode::Ok) {
            return code;
        }
        if (closed) {
            warnings.push_back(
                WarningAt(place, message + ": the directory '" + *closed + "' cannot be read.",
                          "Give this user the right to read it, or take the pattern out."));
        } else if (!IsUtf8(patterns[i])) {
            warnings.push_back(WarningAt(
                place, message + ", perhaps because it is not UTF-8.",
                "Where the names of the files are UTF-8, save the configuration file as UTF-8 without a byte-order mark."));
        } else {
            warnings.push_back(WarningAt(place, message + ".", cure));
        }
    }
    return ResultCode::Ok;
}

void LintLeavingPatterns(const LintSubject& subject, RuleWarnings& warnings) {
    const auto& patterns = PatternsInUse(subject.selection.config);
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        const PathSet& matches = subject.selection.matches[i];
        const bool isOutside =
            LeavesGame(LexicalPath(WithForwardSlashes(patterns[i]))) ||
            std::any_of(matches.begin(), matches.end(),
                        [](const std::string& match) { return LeavesGame(LexicalPath(match)); });
        if (isOutside) {
            warnings.push_back(WarningAt(
                subject.places.patterns.at(i),
                "The pattern '" + patterns[i] + "' leads out of the game directory by '..'.",
                "Name only files of the game: on another machine there is something else beside it."));
        }
    }
}

ResultCode LintLinksOutOfGame(const LintSubject& subject, RuleWarnings& warnings) {
    const CatalogueConfig& config = subject.selection.config;
    OutwardLinks outwardLinks;
    // Exclude patterns may lead anywhere.
    for (std::size_t i = 0; i < config.includePaths.size(); ++i) {
        std::set<std::string> links;
        for (const std::string& match : subject.selection.matches[i]) {
            const std::string path = LexicalPath(match);
            if (LeavesGame(path)) {
                continue;
            }
            std::optional<std::string> link;
            if (const ResultCode code = outwardLinks.Find(path, link); code != ResultCode::Ok) {
                return code;
            }
            if (link) {
                links.insert(std::move(*link));
            }
        }
        if (!links.empty()) {
            warnings.push_back(WarningAt(
                subject.places.patterns.at(i),
                "The pattern '" + config.includePaths[i] + "' leads out of the game directory by " +
                    ByNumber(links.size(), "the link ", "the links ") +
                    QuotedNameList({links.begin(), links.end()}, kMostNamed) + ".",
                "Ship files in place of links: on another machine there is something else where they lead."));
        }
    }
    return ResultCode::Ok;
}

void LintExtensionCase(const LintSubject& subject, RuleWarnings& warnings) {
    const auto& excluded = subject.selection.config.excludedExtensions;
    if (excluded.empty()) {
        return;
    }
    auto sealed = FilesByExtension(subject.selection);
    // Sorted: of several that differ in letter case alone, the first is told.
    for (const std::string& extension : std::set<std::string>(excluded.begin(), excluded.end())) {
        const auto files = sealed.extract(CaseFolded(extension));
        if (files.empty()) {
            continue;
        }
        const auto place = subject.places.extensions.find(extension);
        warnings.push_back(
            WarningOfCase(place == subject.places.extensions.end() ? kNoPlace : place->second,
                          extension, files.mapped()));
    }
}

}  // namespace sealkeeper
