// Lists and tables of pairs. They end at the first closing bracket, even inside quotes.
#include <string>

#include "config/config_names.h"
#include "inspect/lint/bracketed_value.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

constexpr const char* kWildcardCure =
    "Write '?' in place of each bracket, which stands for any one character.";

std::string BracketCure(const BracketedValue& list) {
    if (list.KeyName() == kIncludePathsKey) {
        return kWildcardCure;
    }
    if (list.KeyName() == kExcludePathsKey) {
        return std::string(kWildcardCure) +
               " See that no other file fits: it would be left out, too.";
    }
    return std::string("Write it without the '") + list.ClosingBracket() +
           "', which cannot be part of it.";
}

// A list ends at its bracket, so an odd number of quotes means that one is still open.
void LintOpenQuote(const LintedText& linted, const BracketedValue& list, LintFindings& findings) {
    const std::size_t end = list.Value().end;
    const std::string bracket(1, list.ClosingBracket());
    const bool isBracketQuoted =
        linted.Part(end, linted.LineEnd(end)).find('"') != std::string_view::npos;
    if (isBracketQuoted) {
        findings.AddMisread(end - 1,
                            "The '" + bracket + "' ends " + ShownName(list.KeyName()) +
                                " even inside quotes, so this element and all after it are lost.",
                            BracketCure(list));
        return;
    }
    findings.Add(list.Quotes().back(),
                 "The double quote here has no partner before the end of " +
                     ShownName(list.KeyName()) + ", so what follows it is left out.",
                 "Write a double quote on both sides of each element.");
}

}  // namespace

void LintListEnds(const LintedText& linted, LintFindings& findings) {
    for (const BracketedValue& list : BracketedValuesOf(linted)) {
        const std::size_t bracket = list.Value().end - 1;
        if (list.ReadingAt(bracket) == PlainReading::Comment) {
            findings.AddMisread(bracket,
                                std::string("The '") + list.ClosingBracket() +
                                    "' in this comment ends " + ShownName(list.KeyName()) + ".",
                                "Keep brackets out of comments between elements.");
        } else if (list.Quotes().size() % 2 != 0) {
            LintOpenQuote(linted, list, findings);
        }
    }
}

}  // namespace sealkeeper
