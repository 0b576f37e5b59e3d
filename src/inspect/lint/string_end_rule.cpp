// Texts. They end at the next double quote, on whichever line it stands.
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {

void LintStringEnds(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue& value : linted.Outline().values) {
        if (value.kind != ConfigValueKind::String || linted.LineEnd(value.begin) >= value.end) {
            continue;
        }
        findings.AddMisread(value.begin,
                            "The text of " + ShownName(linted.KeyOf(value).name) +
                                " goes on to the next double quote, which is on " +
                                linted.LineName(value.end - 1) +
                                ", so nothing between them is read.",
                            "Write a double quote at the end of the text.");
    }
}

}  // namespace sealkeeper
