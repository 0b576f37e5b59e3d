// Where and why the scanner stopped before the end of the text.
#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "config/config_names.h"
#include "inspect/lint/known_keys.h"
#include "inspect/lint/leading_digits.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/name_trouble.h"
#include "inspect/lint/plain_reading.h"
#include "inspect/lint/shown_text.h"
#include "inspect/lint/unknown_value.h"
#include "platform/ascii_case.h"

namespace sealkeeper {
namespace {

// The text up to the end of a name.
std::string_view WordAt(const LintedText& linted, std::size_t offset) {
    const std::string_view rest = linted.Text().substr(offset);
    return rest.substr(0, rest.find_first_of(" \t\r\n:"));
}

std::string PendingKeyName(const LintedText& linted) {
    return linted.Outline().keys[linted.Outline().pendingKey].name;
}

// "Write 'version = 2;'." with the number found in the text.
std::string NumberCure(const LintedText& linted, std::size_t offset) {
    const std::string digits(LeadingDigits(linted.Text().substr(offset)));
    return "Write '" + PendingKeyName(linted) + " = " + digits + ";'.";
}

Trouble EmptyListTrouble(const LintedText& linted) {
    const std::string name = PendingKeyName(linted);
    return {"The empty list of " + ShownName(name) + " ends the reading",
            name == kExcludePathsKey
                ? "Write [ ] with a blank between the brackets if nothing is to be excluded."
                : "Write its elements, or remove " + ShownName(name) + "."};
}

// For a value that has no end.
Trouble UnclosedTrouble(const LintedText& linted, ConfigStop why) {
    const std::string pending = ShownName(PendingKeyName(linted));
    if (why == ConfigStop::NoClosingBracket) {
        return {"The list of " + pending + " has no ']' at its end",
                "Write ']' after its last element."};
    }
    if (why == ConfigStop::NoClosingParenthesis) {
        return {"The pairs of " + pending + " have no ')' at their end",
                "Write ')' after the last pair."};
    }
    return {"The text of " + pending + " has no double quote at its end",
            "Write a double quote after its last character."};
}

Trouble SectionWithoutBrace(std::string_view word) {
    const std::string name = LowerCasedAscii(word);
    if (IsKnownSection(name)) {
        return {ShownName(name) + " has no '{'", "Write '{' after the name of the section."};
    }
    return SectionNameTrouble(name);
}

Trouble TroubleOf(const LintedText& linted, const OutlinedStop& stop) {
    const auto pending = [&linted] { return ShownName(PendingKeyName(linted)); };
    switch (stop.why) {
        case ConfigStop::ColonForSectionName:
            return {"The name of a section is expected here, and no name begins with ':'",
                    "Remove the ':', or write a name before it."};
        case ConfigStop::UnendedSectionName:
        case ConfigStop::NoOpeningBrace:
            return SectionWithoutBrace(WordAt(linted, stop.offset));
        case ConfigStop::EqualsSignForKey:
            return {"A key is expected here, and no key begins with '='",
                    "Remove the '=', or write a key before it."};
        case ConfigStop::UnendedKey:
            return {"The file ends in the middle of a key and its value",
                    "Write the value, or remove the key."};
        case ConfigStop::NoValue:
            return {pending() + " has no value", "Write its value, or remove it."};
        case ConfigStop::NoClosingBracket:
        case ConfigStop::NoClosingParenthesis:
        case ConfigStop::NoClosingQuote:
            return UnclosedTrouble(linted, stop.why);
        case ConfigStop::EmptyBrackets:
            return EmptyListTrouble(linted);
        case ConfigStop::EmptyParentheses:
            return {"The empty table of " + pending() + " ends the reading",
                    "Write its pairs, or remove " + pending() + "."};
        case ConfigStop::NoSemicolon:
            return {"The number of " + pending() + " has no semicolon after it",
                    NumberCure(linted, stop.offset)};
        case ConfigStop::UnknownWord:
            return UnknownValueTrouble(linted, stop.offset);
        case ConfigStop::LineFeedInElement:
            break;
    }
    return {};
}

// Whether the stop is a mistake of its own, and not just an effect of a misread value.
bool SpeaksForItself(ConfigStop why) {
    constexpr std::array kOwnReasons = {
        ConfigStop::NoClosingBracket, ConfigStop::EmptyBrackets, ConfigStop::NoClosingParenthesis,
        ConfigStop::EmptyParentheses, ConfigStop::NoSemicolon,
    };
    return std::find(kOwnReasons.begin(), kOwnReasons.end(), why) != kOwnReasons.end();
}

// For the list at `begin`: the opening quote of the first element that spans lines.
std::size_t OpenElement(const LintedText& linted, std::size_t begin) {
    const std::string_view text = linted.Text();
    std::size_t quote = text.find('"', begin);
    while (true) {
        const std::size_t closing = text.find('"', quote + 1);
        if (linted.LineEnd(quote) < closing) {
            return quote;
        }
        quote = text.find('"', closing + 1);
    }
}

void LintLineFeedInElement(const LintedText& linted, std::size_t begin, LintFindings& findings) {
    const std::size_t quote = OpenElement(linted, begin);
    const auto readings = ReadPlainly(linted.Part(begin, quote + 1));
    const std::string refusal =
        ", and the tool refuses a file with a line break inside an element.";
    if (readings.back() == PlainReading::Comment) {
        findings.Add(quote, "The double quote in this comment begins an element" + refusal,
                     "Keep quotes out of comments between elements.");
    } else {
        findings.Add(quote, "The double quote here has no partner on its line" + refusal,
                     "Write a double quote on both sides of each element.");
    }
}

}  // namespace

void LintStop(const LintedText& linted, LintFindings& findings) {
    const auto& stop = linted.Outline().stop;
    if (!stop) {
        return;
    }
    if (stop->why == ConfigStop::LineFeedInElement) {
        LintLineFeedInElement(linted, stop->offset, findings);
        return;
    }
    const std::string effect =
        ", so everything from " + linted.LineName(stop->offset) + " on is ignored.";
    if (stop->offset > findings.FirstMisread() && !SpeaksForItself(stop->why)) {
        const std::string line = linted.LineName(findings.FirstMisread());
        findings.Add(stop->offset,
                     "Because of the mistake on " + line + " the tool stops reading here" + effect,
                     "Correct " + line + " first.");
        return;
    }
    const Trouble trouble = TroubleOf(linted, *stop);
    findings.Add(stop->offset, trouble.what + effect, trouble.cure);
}

}  // namespace sealkeeper
