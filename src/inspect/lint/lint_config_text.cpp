#include "inspect/lint/lint_config_text.h"

#include "inspect/lint/lint_rules.h"

namespace sealkeeper {
namespace {

using LintRule = void (*)(const LintedText&, LintFindings&);

// Rules that find misread values come first. Otherwise this is the order of warnings at the same
// place.
constexpr LintRule kRules[] = {
    LintByteOrderMark,    LintComments,      LintSectionHeaders,  LintNumberEnds,
    LintFlagEnds,         LintStringEnds,    LintListEnds,        LintCommentedElements,
    LintUnquotedElements, LintEmptyElements, LintPairs,           LintBackslashes,
    LintSectionNames,     LintKeyNames,      LintUnclosedSection, LintKeysWithoutValue,
    LintRepeatedKeys,     LintStop,          LintValueKinds,      LintVersion,
    LintPathLists,        LintPatterns,      LintExtensions,      LintAliases,
    LintLargeNumbers,     LintSizeThreshold, LintMaxInstances,    LintAntiTamperSolution,
    LintCrashReporter,
};

}  // namespace

std::vector<RuleWarning> LintConfigText(std::string_view text) {
    if (text.empty()) {
        return {{0, 0, "The file is empty, and the tool refuses an empty one.",
                 "Write the sections config_info and search_options."}};
    }
    const LintedText linted(text);
    LintFindings findings(linted);
    if (IsUtf16OrUtf32(text)) {
        // Other rules would report text that the author does not see.
        LintUtf16OrUtf32(linted, findings);
        return findings.Take();
    }
    for (const LintRule rule : kRules) {
        rule(linted, findings);
    }
    return findings.Take();
}

}  // namespace sealkeeper
