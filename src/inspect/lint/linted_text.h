// A configuration text for the rules of the linter, and their findings.
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
    // `text` must outlive it and must not be empty.
    explicit LintedText(std::string_view text);

    [[nodiscard]] std::string_view Text() const { return text_; }
    [[nodiscard]] const ConfigOutline& Outline() const { return outline_; }
    // Whether the tool can parse the text.
    [[nodiscard]] bool IsParsed() const { return isParsed_; }

    [[nodiscard]] std::string_view Part(std::size_t begin, std::size_t end) const;
    // The offset of the line feed that ends the line, or the length of the text.
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

    // As `Add`, for a value that ends elsewhere than was meant. The scanner then goes on in the
    // wrong state: later names and values are likely not what the author wrote.
    void AddMisread(std::size_t offset, std::string message, std::string cure);

    // The offset of the first misread value. Without one `kNoOffset`, which is greater than any
    // offset.
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
