// A configuration text as the rules of the linter see it, and what they find.
#ifndef SEALKEEPER_INSPECT_LINT_LINTED_TEXT_H
#define SEALKEEPER_INSPECT_LINT_LINTED_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/config_outline.h"
#include "config/text_place.h"
#include "inspect/lint/rule_warning.h"

namespace sealkeeper {

class LintedText {
  public:
    // `text` must outlive it and is not empty.
    explicit LintedText(std::string_view text);

    [[nodiscard]] std::string_view Text() const { return text_; }
    [[nodiscard]] const ConfigOutline& Outline() const { return outline_; }
    // Whether the tool takes the text at all.
    [[nodiscard]] bool IsParsed() const { return isParsed_; }

    [[nodiscard]] std::string_view Part(std::size_t begin, std::size_t end) const;
    // The offset of the line feed that ends the line of `offset`, or the length of the text.
    [[nodiscard]] std::size_t LineEnd(std::size_t offset) const { return lines_.LineEnd(offset); }
    [[nodiscard]] TextPlace PlaceAt(std::size_t offset) const { return lines_.PlaceOf(offset); }
    // "line 7".
    [[nodiscard]] std::string LineName(std::size_t offset) const;

    [[nodiscard]] const OutlinedKey& KeyOf(const OutlinedValue& value) const;
    [[nodiscard]] const OutlinedSection& SectionOf(const OutlinedValue& value) const;

  private:
    std::string_view text_;
    TextLines lines_;
    ConfigOutline outline_;
    bool isParsed_;
};

class LintFindings {
  public:
    explicit LintFindings(const LintedText& linted) : linted_(linted) {}

    void Add(std::size_t offset, std::string message, std::string cure);
    void AddWithoutPlace(std::string message, std::string cure);

    // As `Add`, for a value that ends elsewhere than was meant: the scan goes on in the middle of
    // something, and what it takes from there on is likely none of the author's names and values.
    void AddMisread(std::size_t offset, std::string message, std::string cure);

    // The first misread value's offset; `kNoOffset`, which is past all others, without one.
    [[nodiscard]] std::size_t FirstMisread() const { return firstMisread_; }

    // Sorted by place.
    [[nodiscard]] std::vector<RuleWarning> Take();

  private:
    const LintedText& linted_;
    std::vector<RuleWarning> warnings_;
    std::size_t firstMisread_ = kNoOffset;
};

}  // namespace sealkeeper

#endif
