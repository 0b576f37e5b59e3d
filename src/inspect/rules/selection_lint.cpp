#include "inspect/rules/selection_lint.h"

#include <cassert>

namespace sealkeeper {

ResultCode LintSelection(const LintSubject& subject, RuleWarnings& warnings) {
    assert(subject.selection.matches.size() == subject.secondSelection.matches.size());
    LintUnmatchedPatterns(subject, warnings);
    LintLeavingPatterns(subject, warnings);
    LintLinksOutOfGame(subject, warnings);
    LintExtensionCase(subject, warnings);
    LintRepeatedFiles(subject, warnings);
    if (const ResultCode code = LintRenamedFiles(subject, warnings); code != ResultCode::Ok) {
        return code;
    }
    LintOwnOutputs(subject, warnings);
    LintImpossibleNames(subject, warnings);
    LintBackslashNames(subject, warnings);
    LintUnhashableFiles(subject, warnings);
    LintLetterCase(subject, warnings);
    LintAliasUses(subject, warnings);
    LintLargeFiles(subject, warnings);
    LintLinks(subject, warnings);
    LintUnlistableDirectories(subject, warnings);
    LintUnreachableFiles(subject, warnings);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
