// Numbers. They end at the next semicolon, however many lines below it stands.
#include "inspect/lint/leading_digits.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/plain_reading.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

// What the scanner swallows along with a number.
struct Swallowed {
    std::vector<std::string> keys;
    // Whether the value of the last key continues after the semicolon.
    bool isCut = false;
};

// Whether the text ended inside a value.
bool IsInsideValue(ConfigStop why) {
    return why == ConfigStop::NoClosingBracket || why == ConfigStop::NoClosingParenthesis ||
           why == ConfigStop::NoClosingQuote;
}

// The keys that would have had values if every line of `text`, part of a section, had ended in a
// semicolon.
Swallowed KeysIn(std::string_view text) {
    std::string section = "s {";
    for (const char byte : text) {
        section += byte == '\n' ? ";\n" : std::string(1, byte);
    }
    section += ";\n\n";
    ConfigDocument document;
    ConfigOutline outline;
    static_cast<void>(OutlineConfigText(section, document, outline));
    Swallowed swallowed;
    for (const OutlinedValue& value : outline.values) {
        swallowed.keys.push_back(outline.keys[value.key].name);
    }
    swallowed.isCut = outline.stop && IsInsideValue(outline.stop->why);
    if (swallowed.isCut) {
        swallowed.keys.push_back(outline.keys[outline.pendingKey].name);
    }
    return swallowed;
}

class NumberEnd {
  public:
    NumberEnd(const LintedText& linted, const OutlinedValue& value)
        : linted_(linted),
          value_(value),
          written_(linted.Part(value.begin, value.end)),
          digits_(LeadingDigits(written_)),
          key_(linted.KeyOf(value).name) {}

    void Lint(LintFindings& findings) const {
        const std::string code = WithoutComments(written_);
        const std::string_view tail = std::string_view(code).substr(digits_.size());
        const bool isInComment = tail.back() != ';';
        const Swallowed swallowed = KeysIn(tail.substr(0, tail.size() - 1));
        const bool hasBrace = tail.find('}') != std::string_view::npos;
        if (!swallowed.keys.empty() || hasBrace) {
            LintSwallowed(swallowed, hasBrace, findings);
        } else if (isInComment) {
            LintCommentedSemicolon(findings);
        } else if (!IsBlank(tail)) {
            findings.Add(value_.begin,
                         ShownName(TrimmedBlanks(code)) + " is read as the number " +
                             std::string(digits_) + ", since only the digits at its start count.",
                         "Write a whole number, as in '" + Proper(Ungrouped(code)) + "'.");
        }
    }

  private:
    // The corrected assignment.
    [[nodiscard]] std::string Proper(const std::string& digits) const {
        return key_ + " = " + digits + ";";
    }
    [[nodiscard]] std::string Proper() const { return Proper(std::string(digits_)); }

    // The number without digit separators: "1,024" becomes "1024".
    [[nodiscard]] std::string Ungrouped(const std::string& code) const {
        std::string number(TrimmedBlanks(code));
        std::erase_if(number, [](char byte) { return byte == ',' || byte == '_' || byte == '\''; });
        return IsWholeNumber(number) ? number : std::string(digits_);
    }

    void LintSwallowed(const Swallowed& swallowed, bool hasBrace, LintFindings& findings) const {
        const std::vector<std::string>& keys = swallowed.keys;
        const std::string message =
            "The number of " + ShownName(key_) + " goes on to the next semicolon, which is " +
            (swallowed.isCut ? "inside the value of " + ShownName(keys.back()) + " " : "") + "on " +
            linted_.LineName(value_.end - 1) + ", so " +
            (keys.empty() ? "a '}'" : ShownNames(keys)) + (keys.size() > 1 ? " are" : " is") +
            " not read.";
        const std::string cure = "Write '" + Proper() + "'.";
        // Without the brace, what follows seems to belong to this section. The rest of a cut value
        // is read as keys.
        if (hasBrace || swallowed.isCut) {
            findings.AddMisread(value_.begin, message, cure);
        } else {
            findings.Add(value_.begin, message, cure);
        }
    }

    void LintCommentedSemicolon(LintFindings& findings) const {
        const auto rest = linted_.Part(value_.end, linted_.LineEnd(value_.end));
        if (!IsBlank(rest)) {
            findings.AddMisread(
                value_.begin,
                "The number of " + ShownName(key_) +
                    " ends at the semicolon in a comment, and the rest of that comment is read as keys and values.",
                "Write '" + Proper() + "' before the comment.");
        }
    }

    const LintedText& linted_;
    const OutlinedValue& value_;
    // Including the semicolon.
    std::string_view written_;
    std::string_view digits_;
    const std::string& key_;
};

}  // namespace

void LintNumberEnds(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue& value : linted.Outline().values) {
        if (value.kind == ConfigValueKind::Number) {
            NumberEnd(linted, value).Lint(findings);
        }
    }
}

}  // namespace sealkeeper
