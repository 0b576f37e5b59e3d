// Where sections begin and end.
#include <cstddef>

#include "inspect/lint/known_keys.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/name_trouble.h"
#include "inspect/lint/plain_reading.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

// Accepted without a warning between a name and its brace.
constexpr std::string_view kHeaderBlanks = " \t\r\n:;=";

void LintSectionHeader(const LintedText& linted, const OutlinedSection& section,
                       LintFindings& findings) {
    const std::size_t nameEnd = section.begin + section.name.size();
    const std::string code = WithoutComments(linted.Part(nameEnd, section.brace + 1));
    const std::string name = ShownName(section.name);
    if (code.back() != '{') {
        findings.AddMisread(section.brace, "The '{' that opens " + name + " stands in a comment.",
                            "Write the '{' right after the name.");
        return;
    }
    const std::size_t word = code.find_first_not_of(kHeaderBlanks);
    if (nameEnd + word == section.brace) {
        return;
    }
    if (linted.LineEnd(nameEnd + word) < section.brace) {
        findings.AddMisread(nameEnd + word,
                            name + " has no '{' before this, so all up to the '{' on " +
                                linted.LineName(section.brace) + " is ignored.",
                            "Write '{' after the name of the section.");
    } else if (IsKnownSection(section.name)) {
        findings.Add(nameEnd + word, "What stands between " + name + " and its '{' is ignored.",
                     "Remove it.");
    }
}

// The comment at the end of the text; null if there is none.
const OutlinedComment* LastComment(const LintedText& linted) {
    const auto& comments = linted.Outline().comments;
    const bool isLast = !comments.empty() && comments.back().end == linted.Text().size();
    return isLast ? &comments.back() : nullptr;
}

}  // namespace

void LintSectionHeaders(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedSection& section : linted.Outline().sections) {
        // Reported by the rules for names instead.
        const bool isNoName = FindKeyAtStart(section.name) != nullptr ||
                              section.name.find('{') != std::string::npos ||
                              StartsWithByteOrderMark(section.name);
        if (!isNoName) {
            LintSectionHeader(linted, section, findings);
        }
    }
}

void LintUnclosedSection(const LintedText& linted, LintFindings& findings) {
    const ConfigOutline& outline = linted.Outline();
    if (outline.openSection == kNoIndex || outline.stop) {
        return;
    }
    const OutlinedComment* const comment = LastComment(linted);
    // The scanner ignores the last byte of a text, and that is usually this brace.
    const bool endsInBrace = comment == nullptr && linted.Text().ends_with('}');
    const bool isHidden = comment != nullptr && comment->block != kNoOffset;
    const OutlinedSection& section = outline.sections[outline.openSection];
    if (!endsInBrace && !isHidden && findings.FirstMisread() == kNoOffset) {
        findings.Add(section.begin, ShownName(section.name) + " has no '}' at its end.",
                     "Write '}' after its last value.");
    }
}

}  // namespace sealkeeper
