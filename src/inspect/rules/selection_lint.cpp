#include "inspect/rules/selection_lint.h"

#include <cassert>

namespace sealkeeper {

ResultCode LintSelection(const LintSubject& subject, RuleWarnings& warnings) {
    assert(subject.selection.matches.size() == subject.secondSelection.matches.size());
    // These may fail, so they run before the rest.
    for (const auto rule : {LintUnmatchedPatterns, LintLinksOutOfGame, LintRenamedFiles}) {
        if (const ResultCode code = rule(subject, warnings); code != ResultCode::Ok) {
            return code;
        }
    }
    LintLeavingPatterns(subject, warnings);
    LintExtensionCase(subject, warnings);
    LintRepeatedFiles(subject, warnings);
    LintOwnOutputs(subject, warnings);
    LintImpossibleNames(subject, warnings);
    LintBackslashNames(subject, warnings);
    LintUnhashableFiles(subject, warnings);
    LintLetterCase(subject, warnings);
    LintAliasUses(subject, warnings);
    LintTooLarge(subject, warnings);
    LintLinks(subject, warnings);
    LintUnlistableDirectories(subject, warnings);
    LintUnreachableFiles(subject, warnings);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
