// Warnings about names that differ in letter case alone.
#include <algorithm>
#include <string>
#include <vector>

#include "inspect/report/name_list.h"
#include "inspect/report/number_text.h"
#include "inspect/report/utf8_text.h"
#include "inspect/rules/case_conflicts.h"
#include "inspect/rules/case_folding.h"
#include "inspect/rules/selection_lint.h"
#include "inspect/rules/warning_words.h"

namespace sealkeeper {
namespace {

// Whether the name of a sealed file may differ in letter case from another in a way that cannot be
// seen.
bool HasUnknownLetters(const JudgedFile& file) {
    const bool isAscii = std::all_of(file.path.begin(), file.path.end(),
                                     [](char byte) { return static_cast<signed char>(byte) >= 0; });
    return !file.leftOut && !isAscii && IsUtf8(file.path) && !KnowsLettersOfUnicode();
}

template <typename IsWanted>
std::vector<std::string> NamesIn(const CaseConflict& conflict, IsWanted isWanted) {
    std::vector<std::string> names;
    for (const auto& [path, facts] : conflict.names) {
        if (isWanted(facts)) {
            names.push_back(path);
        }
    }
    return names;
}

// "; 'A' and 'b' are left out", or nothing.
std::string TextOfLeftOut(const std::vector<std::string>& leftOut) {
    return leftOut.empty() ? ""
                           : "; " + QuotedNameList(leftOut, kMostNamed) +
                                 ByNumber(leftOut.size(), " is", " are") + " left out";
}

RuleWarning WarningOfDirectories(const std::vector<std::string>& directories,
                                 const std::vector<std::string>& leftOut,
                                 std::size_t clashesBelow) {
    return WarningAt(
        kNoPlace,
        "The directories " + QuotedNameList(directories, kMostNamed) +
            " differ in letter case alone, and " + CountText(clashesBelow, "name") +
            ByNumber(clashesBelow, " below them clashes", " below them clash") +
            TextOfLeftOut(leftOut) + ".",
        "Rename one: where file systems ignore letter case, they become one directory, in which names that clash cannot both be installed, and verify may fail.");
}

const char* CureOf(bool hasDirectory, std::size_t sealedNames) {
    if (hasDirectory) {
        return "Rename one: where file systems ignore letter case, a file and a directory of one name cannot both be installed.";
    }
    return sealedNames > 1
               ? "Rename one: where file systems ignore letter case, only one of them can be installed, and verify may fail."
               : "Rename or remove what is left out: where file systems ignore letter case, it may replace the sealed file, and verify may fail.";
}

RuleWarning WarningOfFiles(const std::vector<std::string>& files,
                           const std::vector<std::string>& directories,
                           const std::vector<std::string>& leftOut) {
    std::string message = QuotedNameList(files, kMostNamed);
    if (!directories.empty()) {
        message += ByNumber(directories.size(), " and the directory ", " and the directories ") +
                   QuotedNameList(directories, kMostNamed);
    }
    return WarningAt(
        kNoPlace, message + " differ in letter case alone" + TextOfLeftOut(leftOut) + ".",
        CureOf(!directories.empty(), files.size() + directories.size() - leftOut.size()));
}

void WarnOf(const CaseConflict& conflict, RuleWarnings& warnings) {
    const auto directories =
        NamesIn(conflict, [](const NameFacts& facts) { return facts.isDirectory; });
    const auto files = NamesIn(conflict, [](const NameFacts& facts) { return !facts.isDirectory; });
    const auto leftOut = NamesIn(conflict, [](const NameFacts& facts) { return !facts.isSealed; });
    if (!files.empty()) {
        warnings.push_back(WarningOfFiles(files, directories, leftOut));
    }
    if (conflict.clashesBelow > 0) {
        const auto directoriesLeftOut = NamesIn(
            conflict, [](const NameFacts& facts) { return facts.isDirectory && !facts.isSealed; });
        warnings.push_back(
            WarningOfDirectories(directories, directoriesLeftOut, conflict.clashesBelow));
    }
}

}  // namespace

void LintLetterCase(const LintSubject& subject, RuleWarnings& warnings) {
    if (std::any_of(subject.files.begin(), subject.files.end(), HasUnknownLetters)) {
        warnings.push_back(WarningAt(
            kNoPlace,
            "Letter case was compared in ASCII letters only: neither the locale 'C.UTF-8' nor 'en_US.UTF-8' can be read.",
            "Install one of them, or look yourself for names that differ in the case of other letters."));
    }
    for (const CaseConflict& conflict :
         FindCaseConflicts(subject.files, subject.directoriesWithoutFiles)) {
        WarnOf(conflict, warnings);
    }
}

}  // namespace sealkeeper
