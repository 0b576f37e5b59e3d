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

RuleWarning WarningOfDirectories(const std::vector<std::string>& directories,
                                 std::size_t namesInCommon) {
    return WarningAt(
        kNoPlace,
        "The directories " + QuotedNameList(directories, kMostNamed) +
            " differ in letter case alone and hold " + CountText(namesInCommon, "file") +
            " of the same name.",
        "Rename one: where file systems ignore letter case, they become one directory, files of the same name replace each other, and verify fails.");
}

const char* CureOf(bool hasDirectory, std::size_t sealedNames) {
    if (hasDirectory) {
        return "Rename one: where file systems ignore letter case, only one of them can be installed.";
    }
    return sealedNames > 1
               ? "Rename one: where file systems ignore letter case, only one of them can be installed, and verify fails for the other."
               : "Rename or remove what is left out: where file systems ignore letter case, it may replace the sealed file, and verify fails.";
}

RuleWarning WarningOf(const CaseConflict& conflict) {
    const auto directories =
        NamesIn(conflict, [](const NameFacts& facts) { return facts.isDirectory; });
    const auto files = NamesIn(conflict, [](const NameFacts& facts) { return !facts.isDirectory; });
    const auto leftOut = NamesIn(conflict, [](const NameFacts& facts) { return !facts.isSealed; });
    if (files.empty()) {
        return WarningOfDirectories(directories, conflict.namesInCommon);
    }
    std::string message = QuotedNameList(files, kMostNamed);
    if (!directories.empty()) {
        message += ByNumber(directories.size(), " and the directory ", " and the directories ") +
                   QuotedNameList(directories, kMostNamed);
    }
    message += " differ in letter case alone";
    if (!leftOut.empty()) {
        message += "; " + QuotedNameList(leftOut, kMostNamed) +
                   ByNumber(leftOut.size(), " is", " are") + " left out";
    }
    return WarningAt(kNoPlace, message + ".",
                     CureOf(!directories.empty(), conflict.names.size() - leftOut.size()));
}

}  // namespace

void LintLetterCase(const LintSubject& subject, RuleWarnings& warnings) {
    if (std::any_of(subject.files.begin(), subject.files.end(), HasUnknownLetters)) {
        warnings.push_back(WarningAt(
            kNoPlace,
            "Letter case was compared in ASCII letters only: neither the locale 'C.UTF-8' nor 'en_US.UTF-8' can be read.",
            "Install one of them, or look yourself for names that differ in the case of other letters."));
    }
    for (const CaseConflict& conflict : FindCaseConflicts(subject.files)) {
        warnings.push_back(WarningOf(conflict));
    }
}

}  // namespace sealkeeper
