// Flags. The scanner skips one byte after true or false, whatever it is.
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kHarmless = " \t\r\n;,";
constexpr std::string_view kFlagEnd = " \t\r\n;,}";

void LintFlagEnd(const LintedText& linted, const OutlinedValue& value, LintFindings& findings) {
    const std::string_view after = linted.Part(value.end, linted.LineEnd(value.end));
    if (after.empty() || kHarmless.find(after.front()) != std::string_view::npos) {
        return;
    }
    const std::string word(linted.Part(value.begin, value.end));
    if (after.front() == '}') {
        findings.AddMisread(
            value.end,
            "The '}' right after '" + word + "' is passed over unread, so the section stays open.",
            "Write a blank or a semicolon before the '}'.");
        return;
    }
    if (IsBlank(after.substr(1))) {
        return;
    }
    if (after.front() == '#' || after.front() == '/') {
        findings.AddMisread(value.end,
                            "The first character of the comment right after '" + word +
                                "' is passed over unread, so its text is read as a key.",
                            "Write a blank or a semicolon before the comment.");
        return;
    }
    // Limited to what is shown. Scanning to the end of the line for every value would be quadratic.
    const std::string_view near = after.substr(0, kLongestShown + 1);
    const std::string_view rest = near.substr(0, near.find_first_of(kFlagEnd));
    if (rest.size() > 1) {
        findings.AddMisread(value.begin,
                            ShownName(word + std::string(rest)) + " is read as '" + word +
                                "', and its end is taken for a key.",
                            "Write a blank or a semicolon after '" + word + "'.");
    }
}

}  // namespace

void LintFlagEnds(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue& value : linted.Outline().values) {
        if (value.kind == ConfigValueKind::Flag) {
            LintFlagEnd(linted, value, findings);
        }
    }
}

}  // namespace sealkeeper
