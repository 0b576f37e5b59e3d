// Finds likely mistakes in a selection. Each function looks for one kind and appends a warning.
// None reads the text of the configuration file, only the result.
#ifndef SEALKEEPER_INSPECT_RULES_SELECTION_LINT_H
#define SEALKEEPER_INSPECT_RULES_SELECTION_LINT_H

#include <string>
#include <vector>

#include "app/result_code.h"
#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/rule_places.h"
#include "inspect/rules/rules_report.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// What to examine. The current directory is the game directory. Both selections are complete and
// follow the same rules, so they have matches for the same patterns.
struct LintSubject {
    // With what `LookAtWhatIsRead` sets.
    const Selection& selection;
    // The selection of a second run, which finds the outputs of the first.
    const Selection& secondSelection;
    const PlannedOutputs& outputs;
    // The outputs by other paths; see `SecondSelection`.
    const PlannedOutputs& writtenOutputs;
    const RulePlaces& places;
    const std::vector<JudgedFile>& files;
    // Their lexical paths.
    const std::vector<std::string>& directoriesWithoutFiles;
};

using RuleWarnings = std::vector<RuleWarning>;

// pattern_lint.cpp

// Patterns without matches, and whether an unreadable directory or their encoding is the reason.
// Fails as `JudgeLookError` does.
ResultCode LintUnmatchedPatterns(const LintSubject& subject, RuleWarnings& warnings);
// Patterns that leave the game by "..".
void LintLeavingPatterns(const LintSubject& subject, RuleWarnings& warnings);
// Include patterns that leave the game by a link. Fails as `JudgeLookError` does.
ResultCode LintLinksOutOfGame(const LintSubject& subject, RuleWarnings& warnings);
// Excluded extensions that sealed files have in another letter case.
void LintExtensionCase(const LintSubject& subject, RuleWarnings& warnings);

// repeat_lint.cpp

// Files that are sealed more than once, because patterns lead to them by different paths.
void LintRepeatedFiles(const LintSubject& subject, RuleWarnings& warnings);
// Files that several patterns lead to by different names, because one is a link or leads through
// one. Fails as `JudgeLookError` does.
ResultCode LintRenamedFiles(const LintSubject& subject, RuleWarnings& warnings);

// output_lint.cpp

// The run's own outputs among the files it seals.
void LintOwnOutputs(const LintSubject& subject, RuleWarnings& warnings);

// name_lint.cpp

// Names that no catalogue can hold. One that is not UTF-8 is listed as another file, which is empty
// where it does not exist; generate fails where that file cannot be read. At a name that is too
// long, generate fails.
void LintImpossibleNames(const LintSubject& subject, RuleWarnings& warnings);
// Names with a backslash, which the catalogue stores as '/'.
void LintBackslashNames(const LintSubject& subject, RuleWarnings& warnings);
// Files that are selected but cannot be hashed: not regular, or not to be read or reached by this
// user.
void LintUnhashableFiles(const LintSubject& subject, RuleWarnings& warnings);

// letter_case_lint.cpp

// Sealed files that cannot stand beside another file or directory where file systems ignore letter
// case. Also warns if the letters of some names cannot be compared.
void LintLetterCase(const LintSubject& subject, RuleWarnings& warnings);

// alias_lint.cpp

// Path aliases, and what verify does with the paths they change.
void LintAliasUses(const LintSubject& subject, RuleWarnings& warnings);

// hole_lint.cpp

// Files silently left out because of their size, and directories because of that of their own
// entries.
void LintTooLarge(const LintSubject& subject, RuleWarnings& warnings);
// Links, which are never sealed.
void LintLinks(const LintSubject& subject, RuleWarnings& warnings);
// Directories that cannot be read.
void LintUnlistableDirectories(const LintSubject& subject, RuleWarnings& warnings);
// Files that a pattern leads to in directories that cannot be searched.
void LintUnreachableFiles(const LintSubject& subject, RuleWarnings& warnings);

// Runs all of them until one fails.
ResultCode LintSelection(const LintSubject& subject, RuleWarnings& warnings);

}  // namespace sealkeeper

#endif
