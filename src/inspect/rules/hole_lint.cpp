// Warnings about files that generate leaves out silently.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "config/config_names.h"
#include "inspect/report/name_list.h"
#include "inspect/report/number_text.h"
#include "inspect/rules/selection_lint.h"
#include "inspect/rules/warning_words.h"
#include "inspect/tree/lexical_path.h"

namespace sealkeeper {
namespace {

std::vector<const JudgedFile*> LeftOutBy(LeftOutReason reason,
                                         const std::vector<JudgedFile>& files) {
    std::vector<const JudgedFile*> found;
    for (const JudgedFile& file : files) {
        if (file.leftOut == reason) {
            found.push_back(&file);
        }
    }
    return found;
}

std::vector<std::string> PathsOf(const std::vector<const JudgedFile*>& files) {
    std::vector<std::string> paths;
    paths.reserve(files.size());
    for (const JudgedFile* const file : files) {
        paths.push_back(file->path);
    }
    return paths;
}

// Whether exclude_paths is the list in use. A cure must not name the other list: generate refuses a
// configuration that has both.
bool IsListOfExcludes(const LintSubject& subject) {
    return subject.places.patternKey == kExcludePathsKey;
}

constexpr const char* kCureOfGameItself = "Give this user the right to read it.";

const char* CureOfUnlistable(const std::vector<const JudgedFile*>& directories,
                             const LintSubject& subject) {
    if (!IsListOfExcludes(subject)) {
        return "Give this user the right to read it, or write patterns that do not take it in.";
    }
    // Then there is no other, and the walk begins there whatever is excluded.
    return directories.front()->path == kGameItself
               ? kCureOfGameItself
               : "Give this user the right to read it, or exclude it if that is meant.";
}

// The outermost directory above `path` that is in `directories`; empty if none is.
std::string_view OutermostAbove(std::string_view path, const LexicalPaths& directories) {
    std::string_view outermost;
    for (path = ParentOf(path); !path.empty(); path = ParentOf(path)) {
        if (directories.contains(path)) {
            outermost = path;
        }
    }
    return outermost;
}

// What the size threshold leaves out.
struct TooLarge {
    std::vector<const JudgedFile*> files;
    // Directories whose own entries are too large, and how many files are left out with them.
    std::set<std::string> directories;
    std::size_t filesInDirectories = 0;
};

TooLarge TooLargeOf(const LintSubject& subject) {
    LexicalPaths skipped;
    for (const SkippedPath& path : subject.selection.skipped) {
        if (path.rule == SkipRule::SizeThreshold) {
            skipped.insert(LexicalPath(path.path));
        }
    }
    TooLarge tooLarge;
    for (const JudgedFile* const file : LeftOutBy(LeftOutReason::TooLarge, subject.files)) {
        const std::string_view directory = OutermostAbove(file->path, skipped);
        if (directory.empty()) {
            tooLarge.files.push_back(file);
        } else {
            tooLarge.directories.emplace(directory);
            ++tooLarge.filesInDirectories;
        }
    }
    return tooLarge;
}

// That is reported by the linter already.
bool IsThresholdNegative(const LintSubject& subject) {
    return static_cast<std::int64_t>(subject.selection.config.sizeThresholdBytes) < 0;
}

void WarnOfLargeFiles(const std::vector<const JudgedFile*>& large, const LintSubject& subject,
                      RuleWarnings& warnings) {
    if (large.empty()) {
        return;
    }
    const auto largest = std::max_element(
        large.begin(), large.end(),
        [](const JudgedFile* a, const JudgedFile* b) { return a->sizeBytes < b->sizeBytes; });
    warnings.push_back(WarningAt(
        subject.places.sizeThreshold.value_or(kNoPlace),
        CountText(large.size(), "file") + " above the size threshold of " +
            SizeText(subject.selection.config.sizeThresholdBytes) +
            ByNumber(large.size(), " is silently left out: '",
                     " are silently left out, the largest '") +
            (*largest)->path + "' with " + SizeText((*largest)->sizeBytes) + ".",
        IsListOfExcludes(subject)
            ? "Raise exclude_size_threshold, or name the file in exclude_paths if that is meant: what is left out can be changed by anybody."
            : "Raise exclude_size_threshold, or name the file itself in include_paths: what is left out can be changed by anybody."));
}

void WarnOfLargeDirectories(const TooLarge& tooLarge, const LintSubject& subject,
                            RuleWarnings& warnings) {
    const auto& directories = tooLarge.directories;
    if (directories.empty()) {
        return;
    }
    warnings.push_back(
        WarningAt(subject.places.sizeThreshold.value_or(kNoPlace),
                  CountText(tooLarge.filesInDirectories, "file") + " in " +
                      QuotedNameList({directories.begin(), directories.end()}, kMostNamed) +
                      ByNumber(tooLarge.filesInDirectories, " is", " are") +
                      " silently left out: the list of names in " +
                      ByNumber(directories.size(), "that directory", "each of those directories") +
                      " is itself above the size threshold of " +
                      SizeText(subject.selection.config.sizeThresholdBytes) + ".",
                  "Raise exclude_size_threshold, or spread the files over more directories."));
}

}  // namespace

void LintTooLarge(const LintSubject& subject, RuleWarnings& warnings) {
    if (IsThresholdNegative(subject)) {
        return;
    }
    const TooLarge tooLarge = TooLargeOf(subject);
    WarnOfLargeFiles(tooLarge.files, subject, warnings);
    WarnOfLargeDirectories(tooLarge, subject, warnings);
}

void LintLinks(const LintSubject& subject, RuleWarnings& warnings) {
    auto links = LeftOutBy(LeftOutReason::Link, subject.files);
    const auto dangling = LeftOutBy(LeftOutReason::DanglingLink, subject.files);
    links.insert(links.end(), dangling.begin(), dangling.end());
    if (links.empty()) {
        return;
    }
    warnings.push_back(
        WarningAt(kNoPlace,
                  QuotedNameList(PathsOf(links), kMostNamed) +
                      ByNumber(links.size(), " is a link", " are links") +
                      " and left out: links found in a directory are neither followed nor sealed.",
                  "Ship files in place of links."));
}

void LintUnlistableDirectories(const LintSubject& subject, RuleWarnings& warnings) {
    auto directories = LeftOutBy(LeftOutReason::Unlistable, subject.files);
    const auto game =
        std::find_if(directories.begin(), directories.end(),
                     [](const JudgedFile* directory) { return directory->path == kGameItself; });
    // Include patterns may lead to files in it all the same.
    if (HasIncludes(subject.selection.config) && game != directories.end()) {
        warnings.push_back(WarningAt(
            kNoPlace,
            "The game directory cannot be listed, so the files that are left out are not known.",
            kCureOfGameItself));
        directories.erase(game);
    }
    if (directories.empty()) {
        return;
    }
    warnings.push_back(WarningAt(kNoPlace,
                                 QuotedNameList(PathsOf(directories), kMostNamed) +
                                     " cannot be read, so nothing in " +
                                     ByNumber(directories.size(), "it", "them") + " is sealed.",
                                 CureOfUnlistable(directories, subject)));
}

void LintUnreachableFiles(const LintSubject& subject, RuleWarnings& warnings) {
    const auto files = LeftOutBy(LeftOutReason::Unreachable, subject.files);
    if (files.empty()) {
        return;
    }
    warnings.push_back(WarningAt(
        kNoPlace,
        QuotedNameList(PathsOf(files), kMostNamed) +
            ByNumber(files.size(),
                     " lies in a directory that this user may not search, and is not sealed.",
                     " lie in directories that this user may not search, and are not sealed."),
        "Give this user the right to search the directory, or write patterns that do not lead into it."));
}

}  // namespace sealkeeper
