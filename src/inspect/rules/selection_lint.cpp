#include "inspect/rules/selection_lint.h"

#include <cassert>

namespace sealkeeper {

RuleWarnings LintSelection(const LintSubject& subject) {
    assert(subject.selection.matches.size() == subject.secondSelection.matches.size());
    RuleWarnings warnings;
    LintUnmatchedPatterns(subject, warnings);
    LintLeavingPatterns(subject, warnings);
    LintLinksOutOfGame(subject, warnings);
    LintExtensionCase(subject, warnings);
    LintRepeatedFiles(subject, warnings);
    LintRenamedFiles(subject, warnings);
    LintOwnOutputs(subject, warnings);
    LintImpossibleNames(subject, warnings);
    LintBackslashNames(subject, warnings);
    LintLetterCase(subject, warnings);
    LintUnhashableFiles(subject, warnings);
    LintAliasUses(subject, warnings);
    LintLargeFiles(subject, warnings);
    LintLinks(subject, warnings);
    LintUnlistableDirectories(subject, warnings);
    LintUnreachableFiles(subject, warnings);
    return warnings;
}

}  // namespace sealkeeper
