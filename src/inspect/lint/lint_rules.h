// The rules of the linter. Each looks for one kind of mistake and adds what it finds.
#ifndef SEALKEEPER_INSPECT_LINT_LINT_RULES_H
#define SEALKEEPER_INSPECT_LINT_LINT_RULES_H

#include <string_view>

#include "inspect/lint/linted_text.h"

namespace sealkeeper {

// Whether `text` is UTF-16 or UTF-32, which the scanner cannot read. Recognised by the byte-order
// mark. Without one, by an opening brace in their units, unless the name of a section is there in
// single bytes.
[[nodiscard]] bool IsUtf16OrUtf32(std::string_view text);
// Only for a text in one of these encodings.
void LintUtf16OrUtf32(const LintedText& linted, LintFindings& findings);
void LintByteOrderMark(const LintedText& linted, LintFindings& findings);

// Values that end elsewhere than was meant. These rules come before those that use
// `LintFindings::FirstMisread`.
void LintNumberEnds(const LintedText& linted, LintFindings& findings);
void LintFlagEnds(const LintedText& linted, LintFindings& findings);
void LintStringEnds(const LintedText& linted, LintFindings& findings);
void LintListEnds(const LintedText& linted, LintFindings& findings);
void LintSectionHeaders(const LintedText& linted, LintFindings& findings);
void LintComments(const LintedText& linted, LintFindings& findings);

// Elements of lists and tables of pairs that are read although they look left out, and the reverse.
void LintCommentedElements(const LintedText& linted, LintFindings& findings);
void LintUnquotedElements(const LintedText& linted, LintFindings& findings);
void LintEmptyElements(const LintedText& linted, LintFindings& findings);
void LintPairs(const LintedText& linted, LintFindings& findings);
void LintBackslashes(const LintedText& linted, LintFindings& findings);

// Names and their places.
void LintSectionNames(const LintedText& linted, LintFindings& findings);
void LintKeyNames(const LintedText& linted, LintFindings& findings);
void LintUnclosedSection(const LintedText& linted, LintFindings& findings);
void LintKeysWithoutValue(const LintedText& linted, LintFindings& findings);
void LintRepeatedKeys(const LintedText& linted, LintFindings& findings);

// Where and why the scanner stopped before the end of the text.
void LintStop(const LintedText& linted, LintFindings& findings);

// How the tool interprets the values.
void LintValueKinds(const LintedText& linted, LintFindings& findings);
void LintVersion(const LintedText& linted, LintFindings& findings);
void LintPathLists(const LintedText& linted, LintFindings& findings);
void LintPatterns(const LintedText& linted, LintFindings& findings);
void LintExtensions(const LintedText& linted, LintFindings& findings);
void LintAliases(const LintedText& linted, LintFindings& findings);
void LintLargeNumbers(const LintedText& linted, LintFindings& findings);
void LintSizeThreshold(const LintedText& linted, LintFindings& findings);
void LintMaxInstances(const LintedText& linted, LintFindings& findings);
void LintAntiTamperSolution(const LintedText& linted, LintFindings& findings);
void LintCrashReporter(const LintedText& linted, LintFindings& findings);

}  // namespace sealkeeper

#endif
