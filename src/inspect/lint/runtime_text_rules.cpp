// Texts for the client, stored in runtime.conf.
#include <cstddef>
#include <string>
#include <vector>

#include "config/config_names.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/nearest_name.h"
#include "inspect/lint/shown_text.h"
#include "inspect/lint/typed_values.h"
#include "inspect/report/name_list.h"
#include "platform/ascii_case.h"
#include "runtime/anti_tamper_solutions.h"
#include "runtime/runtime_configuration.h"

namespace sealkeeper {
namespace {

// Without the first, "None", which is in the table but cannot be chosen.
std::vector<std::string> Choices() {
    const auto names = AntiTamperSolutionNames();
    return {names.begin() + 1, names.end()};
}

// Whether the name found in `text` is a separate word.
bool IsWord(const std::string& text, const NamedSolution& found) {
    const std::string_view name = AntiTamperSolutionNames()[found.solution];
    const std::size_t end = found.offset + name.size();
    return (found.offset == 0 || !IsAsciiLetter(text[found.offset - 1])) &&
           (end == text.size() || !IsAsciiLetter(text[end]));
}

void LintUnknownSolution(const OutlinedText& text, LintFindings& findings) {
    const std::string nearest = NearestName(text.text, Choices());
    findings.Add(
        text.begin,
        ShownName(text.text) +
            " is no anti-tamper solution that the tool knows, so it writes nothing and fails.",
        nearest.empty()
            ? "Write 'Generic' for a solution that is none of " + NameList(Choices()) + "."
            : "Write " + ShownName(nearest) + " if that is meant.");
}

void LintSolution(const OutlinedText& text, LintFindings& findings) {
    const auto found = FindAntiTamperSolutions(text.text);
    if (found.empty()) {
        LintUnknownSolution(text, findings);
        return;
    }
    const NamedSolution& first = found.front();
    const std::string taken = ShownName(AntiTamperSolutionNames()[first.solution]);
    if (first.solution == kNoAntiTamperSolution) {
        findings.Add(
            text.begin,
            ShownName(text.text) +
                " is taken for 'None', which cannot be chosen, so the tool writes nothing and fails.",
            "Remove the key if there is no solution.");
    } else if (found.size() > 1) {
        findings.Add(
            text.begin,
            ShownName(text.text) + " names several solutions, of which " + taken + " is taken.",
            "Write the name of one.");
    } else if (!IsWord(text.text, first)) {
        findings.Add(text.begin,
                     ShownName(text.text) + " is taken for " + taken +
                         ", since these letters are part of it.",
                     "Write " + taken + " if that is meant, or 'Generic'.");
    }
}

}  // namespace

void LintAntiTamperSolution(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue* value :
         ValuesOfKind(linted, kRuntimeSection, kAntiTamperKey, ConfigValueKind::String)) {
        LintSolution(value->texts.front(), findings);
    }
}

void LintCrashReporter(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue* value :
         ValuesOfKind(linted, kRuntimeSection, kCrashReporterKey, ConfigValueKind::String)) {
        const OutlinedText& name = value->texts.front();
        const std::string room = std::to_string(kCrashReporterNameBytes);
        const std::string cure =
            "Write a name of at most " + std::to_string(kCrashReporterNameBytes - 1) + " bytes.";
        if (name.text.size() > kCrashReporterNameBytes) {
            findings.Add(name.begin,
                         "The name of the crash reporter has " + std::to_string(name.text.size()) +
                             " bytes, of which only the first " + room + " are kept.",
                         cure);
        } else if (name.text.size() == kCrashReporterNameBytes) {
            findings.Add(name.begin,
                         "The name of the crash reporter has " + room +
                             " bytes, which leaves no room for the zero byte after it.",
                         cure);
        }
    }
}

}  // namespace sealkeeper
