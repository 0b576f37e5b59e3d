#include "inspect/lint/linted_text.h"

#include <algorithm>
#include <utility>

namespace sealkeeper {

LintedText::LintedText(std::string_view text) : text_(text), lines_(text) {
    ConfigDocument document;
    isParsed_ = OutlineConfigText(text, document, outline_);
}

std::string_view LintedText::Part(std::size_t begin, std::size_t end) const {
    return text_.substr(begin, end - begin);
}

std::string LintedText::LineName(std::size_t offset) const {
    return "line " + std::to_string(PlaceAt(offset).line);
}

const OutlinedKey& LintedText::KeyOf(const OutlinedValue& value) const {
    return outline_.keys[value.key];
}

const OutlinedSection& LintedText::SectionOf(const OutlinedValue& value) const {
    return outline_.sections[value.section];
}

void LintFindings::Add(std::size_t offset, std::string message, std::string cure) {
    const TextPlace place = linted_.PlaceAt(offset);
    warnings_.push_back({place.line, place.column, std::move(message), std::move(cure)});
}

void LintFindings::AddWithoutPlace(std::string message, std::string cure) {
    warnings_.push_back({0, 0, std::move(message), std::move(cure)});
}

void LintFindings::AddMisread(std::size_t offset, std::string message, std::string cure) {
    firstMisread_ = std::min(firstMisread_, offset);
    Add(offset, std::move(message), std::move(cure));
}

std::vector<RuleWarning> LintFindings::Take() {
    SortByPlace(warnings_);
    return std::move(warnings_);
}

}  // namespace sealkeeper
