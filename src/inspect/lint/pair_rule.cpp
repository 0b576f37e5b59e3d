// Pairs. The scanner forms them by order alone.
#include <cstddef>

#include "inspect/lint/bracketed_value.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

constexpr const char* kPairCure = "Write each pair as [\"old\", \"new\"].";

// Whether a bracket, which to a person ends a pair, stands between the two parts of one.
bool IsSplitByBracket(const LintedText& linted, const BracketedValue& table,
                      const OutlinedText& name, const OutlinedText& value) {
    for (std::size_t offset = name.end + 1; offset + 1 < value.begin; ++offset) {
        const char byte = linted.Text()[offset];
        if ((byte == '[' || byte == ']') && table.ReadingAt(offset) == PlainReading::Code) {
            return true;
        }
    }
    return false;
}

void LintSplitPairs(const LintedText& linted, const BracketedValue& table, LintFindings& findings) {
    const auto& texts = table.Value().texts;
    for (std::size_t i = 0; i + 1 < texts.size(); i += 2) {
        if (IsSplitByBracket(linted, table, texts[i], texts[i + 1])) {
            findings.Add(
                texts[i].begin - 1,
                ShownName(texts[i].text) + " and " + ShownName(texts[i + 1].text) +
                    " are taken for a pair, since brackets do not count and texts are taken two by two.",
                kPairCure);
            // All later pairs are shifted as well.
            return;
        }
    }
}

void LintOddText(const LintedText& linted, const BracketedValue& table, LintFindings& findings) {
    const auto& quotes = table.Quotes();
    const std::size_t first = 2 * table.Value().texts.size();
    const bool isName = first + 1 < quotes.size() && first + 3 >= quotes.size();
    if (isName && quotes[first + 1] != quotes[first] + 1) {
        findings.Add(quotes[first],
                     ShownName(linted.Part(quotes[first] + 1, quotes[first + 1])) +
                         " has no replacement and is left out.",
                     kPairCure);
    }
}

}  // namespace

void LintPairs(const LintedText& linted, LintFindings& findings) {
    for (const BracketedValue& table : BracketedValuesOf(linted)) {
        if (!table.IsList()) {
            LintSplitPairs(linted, table, findings);
            LintOddText(linted, table, findings);
        }
    }
}

}  // namespace sealkeeper
