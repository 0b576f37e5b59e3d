// A list or table of pairs with its brackets, as the scanner reads it and as a person does.
#ifndef SEALKEEPER_INSPECT_LINT_BRACKETED_VALUE_H
#define SEALKEEPER_INSPECT_LINT_BRACKETED_VALUE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/lint/linted_text.h"
#include "inspect/lint/plain_reading.h"

namespace sealkeeper {

// Offsets refer to the whole text.
class BracketedValue {
  public:
    // `value` is a list or table of pairs in `linted`; both must outlive it.
    BracketedValue(const LintedText& linted, const OutlinedValue& value);

    [[nodiscard]] const OutlinedValue& Value() const { return value_; }
    [[nodiscard]] bool IsList() const { return value_.kind == ConfigValueKind::List; }
    [[nodiscard]] const std::string& KeyName() const { return linted_.KeyOf(value_).name; }
    [[nodiscard]] char OpeningBracket() const { return IsList() ? '[' : '('; }
    [[nodiscard]] char ClosingBracket() const { return IsList() ? ']' : ')'; }

    // How a person reads the byte at `offset`, which must be inside the value.
    [[nodiscard]] PlainReading ReadingAt(std::size_t offset) const;

    // Offsets of all double quotes. The scanner pairs them in order.
    [[nodiscard]] const std::vector<std::size_t>& Quotes() const { return quotes_; }

    // The text before, between and after the quoted parts, without the closing bracket.
    struct Gap {
        std::size_t begin;
        std::size_t end;
    };
    [[nodiscard]] std::vector<Gap> Gaps() const;

    // The offset of the first byte in `gap` that is neither in a comment nor one of `separators`;
    // `kNoOffset` if there is none.
    [[nodiscard]] std::size_t FindBare(const Gap& gap, std::string_view separators) const;

  private:
    const LintedText& linted_;
    const OutlinedValue& value_;
    std::vector<PlainReading> readings_;
    std::vector<std::size_t> quotes_;
};

[[nodiscard]] std::vector<BracketedValue> BracketedValuesOf(const LintedText& linted);

}  // namespace sealkeeper

#endif
