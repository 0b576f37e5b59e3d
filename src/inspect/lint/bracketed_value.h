// A list or a table of pairs with its brackets, as the scan and as a person reads it.
#ifndef SEALKEEPER_INSPECT_LINT_BRACKETED_VALUE_H
#define SEALKEEPER_INSPECT_LINT_BRACKETED_VALUE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/lint/linted_text.h"
#include "inspect/lint/plain_reading.h"

namespace sealkeeper {

// Offsets are those of the whole text.
class BracketedValue {
  public:
    // `value` is a list or a table of pairs of `linted`; both must outlive it.
    BracketedValue(const LintedText& linted, const OutlinedValue& value);

    [[nodiscard]] const OutlinedValue& Value() const { return value_; }
    [[nodiscard]] bool IsList() const { return value_.kind == ConfigValueKind::List; }
    [[nodiscard]] const std::string& KeyName() const { return linted_.KeyOf(value_).name; }
    [[nodiscard]] char OpeningBracket() const { return IsList() ? '[' : '('; }
    [[nodiscard]] char ClosingBracket() const { return IsList() ? ']' : ')'; }

    // How a person reads the byte at `offset`, which is inside the value.
    [[nodiscard]] PlainReading ReadingAt(std::size_t offset) const;

    // Of all double quotes. The scan takes them two by two.
    [[nodiscard]] const std::vector<std::size_t>& Quotes() const { return quotes_; }

    // What stands before, between and after the quoted parts, the closing bracket not included.
    struct Gap {
        std::size_t begin;
        std::size_t end;
    };
    [[nodiscard]] std::vector<Gap> Gaps() const;

    // The first byte of `gap` that is in no comment and none of `separators`; `kNoOffset` without
    // one.
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
