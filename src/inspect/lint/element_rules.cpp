// Elements that are read although they look left out, and the reverse.
#include <algorithm>
#include <cstddef>
#include <string>

#include "inspect/lint/bracketed_value.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"
#include "inspect/lint/wrong_quotes.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kListSeparators = " \t\r\n,;";
// Brackets around pairs are optional; the scanner ignores them.
constexpr std::string_view kPairSeparators = " \t\r\n,;[]";
constexpr std::string_view kBareWordEnd = " \t\r\n,;\"[]()";

void LintUnquotedGap(const LintedText& linted, const BracketedValue& list,
                     const BracketedValue::Gap& gap, LintFindings& findings) {
    const std::size_t bare = list.FindBare(gap, list.IsList() ? kListSeparators : kPairSeparators);
    if (bare == kNoOffset) {
        return;
    }
    const std::string_view rest = linted.Part(bare, gap.end);
    const std::string key = ShownName(list.KeyName());
    const std::string opening = {list.OpeningBracket(), '='};
    if (rest.find_first_of(opening) != std::string_view::npos) {
        const std::string bracket(1, list.ClosingBracket());
        findings.Add(bare,
                     "There is no '" + bracket + "' before this, so it and all up to the next '" +
                         bracket + "' are taken for a part of " + key + ".",
                     "Write '" + bracket + "' after the last element of " + key + ".");
    } else if (StartsWithWrongQuote(rest)) {
        findings.Add(bare, "Text in other quotes than straight double ones is left out.",
                     "Write each element in straight double quotes, as in \"Content\".");
    } else {
        const std::string_view word =
            rest.substr(0, std::max<std::size_t>(rest.find_first_of(kBareWordEnd), 1));
        findings.Add(bare, ShownName(word) + " is not in double quotes and is left out.",
                     "Write it in double quotes, or remove it.");
    }
}

void LintEmptyElement(const BracketedValue& list, std::size_t quote, LintFindings& findings) {
    if (list.IsList()) {
        findings.Add(quote, "An empty element is ignored.", "Remove it.");
    } else {
        findings.Add(quote,
                     "An empty text ends " + ShownName(list.KeyName()) +
                         " here, so this pair and those after it are lost.",
                     "Write a name and a replacement in each pair, neither of them empty.");
    }
}

}  // namespace

void LintCommentedElements(const LintedText& linted, LintFindings& findings) {
    for (const BracketedValue& list : BracketedValuesOf(linted)) {
        // Of a pair, only the name is looked at.
        const std::size_t step = list.IsList() ? 1 : 2;
        const auto& texts = list.Value().texts;
        for (std::size_t i = 0; i < texts.size(); i += step) {
            if (list.ReadingAt(texts[i].begin - 1) == PlainReading::Comment) {
                findings.Add(
                    texts[i].begin - 1,
                    ShownName(texts[i].text) +
                        " looks commented out, but is taken: there are no comments between brackets.",
                    "Remove it, or its quotes.");
            }
        }
    }
}

void LintUnquotedElements(const LintedText& linted, LintFindings& findings) {
    for (const BracketedValue& list : BracketedValuesOf(linted)) {
        for (const BracketedValue::Gap& gap : list.Gaps()) {
            LintUnquotedGap(linted, list, gap, findings);
        }
    }
}

void LintEmptyElements(const LintedText& linted, LintFindings& findings) {
    for (const BracketedValue& list : BracketedValuesOf(linted)) {
        const auto& quotes = list.Quotes();
        for (std::size_t i = 0; i + 1 < quotes.size(); i += 2) {
            if (quotes[i + 1] != quotes[i] + 1) {
                continue;
            }
            LintEmptyElement(list, quotes[i], findings);
            if (!list.IsList()) {
                break;
            }
        }
    }
}

}  // namespace sealkeeper
