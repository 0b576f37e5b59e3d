// What is likely wrong with a selection: each function looks for one thing and appends a warning
// for what it finds. None looks at the text of the configuration file, only at what came of it.
#ifndef SEALKEEPER_INSPECT_RULES_SELECTION_LINT_H
#define SEALKEEPER_INSPECT_RULES_SELECTION_LINT_H

#include <vector>

#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/rule_places.h"
#include "inspect/rules/rules_report.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// What is looked at. The current directory is the game directory. Both selections are complete and
// of the same rules, so they have matches for the same number of patterns.
struct LintSubject {
    const Selection& selection;
    // What a second run would select, which finds the outputs of the first.
    const Selection& secondSelection;
    const PlannedOutputs& outputs;
    // The same by where links lead; see `SecondSelection`.
    const PlannedOutputs& writtenOutputs;
    const RulePlaces& places;
    const std::vector<JudgedFile>& files;
};

using RuleWarnings = std::vector<RuleWarning>;

// pattern_lint.cpp

// Patterns that match nothing, and whether that is because a directory cannot be read.
void LintUnmatchedPatterns(const LintSubject& subject, RuleWarnings& warnings);
// Patterns that lead out of the game by "..".
void LintLeavingPatterns(const LintSubject& subject, RuleWarnings& warnings);
// Include patterns that lead out of the game by a link.
void LintLinksOutOfGame(const LintSubject& subject, RuleWarnings& warnings);
// Files that several patterns lead to by different paths, which are sealed as often.
void LintRepeatedFiles(const LintSubject& subject, RuleWarnings& warnings);
// Excluded extensions that leave nothing out, while another letter case would.
void LintExtensionCase(const LintSubject& subject, RuleWarnings& warnings);

// output_lint.cpp

// The run's own outputs among what it seals.
void LintOwnOutputs(const LintSubject& subject, RuleWarnings& warnings);

// name_lint.cpp

// Names that no catalogue can hold: no UTF-8, which it lists as an empty file of another name, or
// too long, which ends generate.
void LintImpossibleNames(const LintSubject& subject, RuleWarnings& warnings);
// Names with a backslash, which the catalogue holds as another name.
void LintBackslashNames(const LintSubject& subject, RuleWarnings& warnings);
// Names that differ in letter case alone.
void LintLetterCase(const LintSubject& subject, RuleWarnings& warnings);
// What can be named but not hashed: no regular file, or not readable by this user.
void LintUnhashableFiles(const LintSubject& subject, RuleWarnings& warnings);

// alias_lint.cpp

// Path aliases, and what they do to verify.
void LintAliasUses(const LintSubject& subject, RuleWarnings& warnings);

// hole_lint.cpp

// Files that are left out in silence because of their size.
void LintLargeFiles(const LintSubject& subject, RuleWarnings& warnings);
// Links, which are never sealed.
void LintLinks(const LintSubject& subject, RuleWarnings& warnings);
// Directories that cannot be read.
void LintUnlistableDirectories(const LintSubject& subject, RuleWarnings& warnings);

// All of them, in the order of the functions above.
[[nodiscard]] RuleWarnings LintSelection(const LintSubject& subject);

}  // namespace sealkeeper

#endif
