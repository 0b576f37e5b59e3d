// Warnings about names, and about files that are not what their names suggest.
#include <set>
#include <string>

#include "catalogue/catalogue_format.h"
#include "config/config_names.h"
#include "inspect/report/name_list.h"
#include "inspect/report/utf8_text.h"
#include "inspect/rules/fatal_files.h"
#include "inspect/rules/no_utf8_names.h"
#include "inspect/rules/selection_lint.h"
#include "inspect/rules/warning_words.h"
#include "inspect/tree/lexical_path.h"
#include "platform/file_system.h"

namespace sealkeeper {
namespace {

// The lexical paths of the selected files for which `isWanted` holds, sorted and without
// duplicates.
template <typename IsWanted>
std::vector<std::string> SelectedPaths(const Selection& selection, IsWanted isWanted) {
    // Sorts and removes duplicates.
    std::set<std::string> paths;
    for (const SelectedFile& file : selection.files) {
        if (isWanted(file)) {
            paths.insert(LexicalPath(file.path));
        }
    }
    return {paths.begin(), paths.end()};
}

void WarnOf(const std::vector<std::string>& paths, const std::string& singular,
            const std::string& plural, const char* cure, RuleWarnings& warnings) {
    if (!paths.empty()) {
        warnings.push_back(WarningAt(
            kNoPlace,
            QuotedNameList(paths, kMostNamed) + " " + (paths.size() == 1 ? singular : plural),
            cure));
    }
}

bool IsOutOfReach(const SelectedFile& file) {
    return file.type == FileType::Missing && IsUtf8(file.path);
}

bool IsSpecialFile(const SelectedFile& file) {
    return file.type != FileType::Regular && file.type != FileType::Missing && IsUtf8(file.path);
}

struct StandInWords {
    const char* singular;
    const char* plural;
};

StandInWords WordsOf(const StandIn& standIn) {
    if (standIn.refusal) {
        return {
            "is not UTF-8: generate reads 'U82W_ERROR' in its place, and fails at that.",
            "are not UTF-8: generate reads 'U82W_ERROR' in their place, and fails at that.",
        };
    }
    if (standIn.type == FileType::Regular) {
        return {
            "is not UTF-8: the catalogue lists the file 'U82W_ERROR' in its place, so it is not sealed.",
            "are not UTF-8: the catalogue lists the file 'U82W_ERROR' in their place, so they are not sealed.",
        };
    }
    return {
        "is not UTF-8: the catalogue lists an empty file 'U82W_ERROR' in its place, and verify fails.",
        "are not UTF-8: the catalogue lists empty files 'U82W_ERROR' in their place, and verify fails.",
    };
}

}  // namespace

void LintImpossibleNames(const LintSubject& subject, RuleWarnings& warnings) {
    const auto noUtf8 = SelectedPaths(subject.selection,
                                      [](const SelectedFile& file) { return !IsUtf8(file.path); });
    const StandInWords words = WordsOf(subject.selection.standIn);
    WarnOf(noUtf8, words.singular, words.plural, "Rename it, or leave it out.", warnings);
    const std::string room = std::to_string(entry_record::kMaxPathUnits);
    WarnOf(SelectedPaths(subject.selection, IsTooLong),
           "is longer than the " + room +
               " UTF-16 units that a catalogue has room for: generate fails at it.",
           "are longer than the " + room +
               " UTF-16 units that a catalogue has room for: generate fails at them.",
           "Shorten its names, or leave it out.", warnings);
    const AliasMap aliases = WideAliases(subject.selection.config.pathAliases);
    WarnOf(SelectedPaths(
               subject.selection,
               [&aliases](const SelectedFile& file) { return IsTooLongByAlias(file, aliases); }),
           "is made too long for a catalogue by an alias: generate fails at it.",
           "are made too long for a catalogue by an alias: generate fails at them.",
           "Shorten its names, or take the alias out.", warnings);
}

void LintBackslashNames(const LintSubject& subject, RuleWarnings& warnings) {
    WarnOf(
        SelectedPaths(
            subject.selection,
            [](const SelectedFile& file) { return file.path.find('\\') != std::string::npos; }),
        "has a backslash, which the catalogue holds as a slash: verify looks for another file and fails.",
        "have a backslash, which the catalogue holds as a slash: verify looks for other files and fails.",
        subject.places.patternKey == kExcludePathsKey
            ? "Rename it, or exclude it by a pattern with '?' in place of the backslash."
            : "Rename it, or write patterns that do not take it in.",
        warnings);
}

void LintUnhashableFiles(const LintSubject& subject, RuleWarnings& warnings) {
    WarnOf(SelectedPaths(subject.selection, IsSpecialFile),
           "is not a regular file: the catalogue lists it as an empty one, and verify fails.",
           "are not regular files: the catalogue lists them as empty ones, and verify fails.",
           "Write patterns that do not match it.", warnings);
    WarnOf(SelectedPaths(subject.selection, IsForbidden),
           "cannot be read by this user: generate fails at it.",
           "cannot be read by this user: generate fails at them.",
           "Give this user the right to read it.", warnings);
    WarnOf(
        SelectedPaths(subject.selection, IsForbiddenButEmpty),
        "is empty and cannot be read by this user: generate seals it all the same, but verify fails where it cannot be read.",
        "are empty and cannot be read by this user: generate seals them all the same, but verify fails where they cannot be read.",
        "Give this user the right to read it.", warnings);
    WarnOf(
        SelectedPaths(subject.selection, IsOutOfReach),
        "lies in a directory that this user may not search: the catalogue lists it as an empty file, and verify fails.",
        "lie in directories that this user may not search: the catalogue lists them as empty files, and verify fails.",
        "Give this user the right to search the directory.", warnings);
}

}  // namespace sealkeeper
