// Unknown names of sections and keys.
#include <cstddef>

#include "inspect/lint/known_keys.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/name_trouble.h"
#include "inspect/lint/nearest_name.h"

namespace sealkeeper {
namespace {

// Whether the name at `offset` is an effect of a misread value before it, which is reported
// already. A name close to one in `known` was meant as such, so it is no effect.
bool ComesOfMisread(std::size_t offset, std::string_view name,
                    const std::vector<std::string>& known, const LintFindings& findings) {
    return offset > findings.FirstMisread() && NearestName(name, known).empty();
}

void AddTrouble(std::size_t offset, const Trouble& trouble, const char* effect,
                LintFindings& findings) {
    if (trouble.isMisread) {
        findings.AddMisread(offset, trouble.what + effect, trouble.cure);
    } else {
        findings.Add(offset, trouble.what + effect, trouble.cure);
    }
}

void LintKeyName(const LintedText& linted, std::size_t index, LintFindings& findings) {
    const ConfigOutline& outline = linted.Outline();
    const OutlinedKey& key = outline.keys[index];
    const std::string& section = outline.sections[key.section].name;
    const std::vector<std::string> known = KnownKeyNames(section);
    if (FindKnownKey(section, key.name) != nullptr ||
        ComesOfMisread(key.begin, key.name, known, findings)) {
        return;
    }
    const Trouble trouble = KeyNameTrouble(section, key.name);
    // If the scanner stopped at its value, that is reported instead.
    const bool isLast = index == outline.pendingKey;
    if (!isLast || trouble.isMisread || !NearestName(key.name, known).empty()) {
        AddTrouble(key.begin, trouble, ", so it is ignored.", findings);
    }
}

}  // namespace

void LintSectionNames(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedSection& section : linted.Outline().sections) {
        if (!IsKnownSection(section.name) && !StartsWithByteOrderMark(section.name) &&
            !ComesOfMisread(section.begin, section.name, KnownSectionNames(), findings)) {
            AddTrouble(section.begin, SectionNameTrouble(section.name),
                       ", so everything in the braces that follow is ignored.", findings);
        }
    }
}

void LintKeyNames(const LintedText& linted, LintFindings& findings) {
    const ConfigOutline& outline = linted.Outline();
    for (std::size_t i = 0; i < outline.keys.size(); ++i) {
        if (IsKnownSection(outline.sections[outline.keys[i].section].name)) {
            LintKeyName(linted, i, findings);
        }
    }
}

}  // namespace sealkeeper
