#include "inspect/credentials/fact_table.h"

#include "inspect/report/aligned_text.h"

namespace sealkeeper {

void FactTable::Begin(std::string_view title, std::string_view subject) {
    if (!text_.empty()) {
        text_ += '\n';
    }
    text_ += console_.Styled(Style::Strong, title);
    if (!subject.empty()) {
        text_ += "  " + console_.Foreign(subject);
    }
    text_ += '\n';
}

void FactTable::Add(const char* label, std::string_view value) {
    Add(label, Style::Plain, value);
}

void FactTable::Add(const char* label, Style style, std::string_view value) {
    constexpr std::size_t kLabelWidth = 13;
    text_ += "  " + console_.Styled(Style::Faint, AlignedLeft(label, kLabelWidth)) +
             console_.Styled(style, console_.Foreign(value)) + '\n';
}

std::string FactTable::Text() const {
    return text_ + '\n';
}

}  // namespace sealkeeper
