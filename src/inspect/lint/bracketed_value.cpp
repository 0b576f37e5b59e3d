#include "inspect/lint/bracketed_value.h"

namespace sealkeeper {

BracketedValue::BracketedValue(const LintedText& linted, const OutlinedValue& value)
    : linted_(linted), value_(value), readings_(ReadPlainly(linted.Part(value.begin, value.end))) {
    for (std::size_t offset = value.begin; offset < value.end; ++offset) {
        if (linted.Text()[offset] == '"') {
            quotes_.push_back(offset);
        }
    }
}

PlainReading BracketedValue::ReadingAt(std::size_t offset) const {
    return readings_[offset - value_.begin];
}

std::vector<BracketedValue::Gap> BracketedValue::Gaps() const {
    std::vector<Gap> gaps;
    std::size_t begin = value_.begin + 1;
    for (std::size_t i = 0; i + 1 < quotes_.size(); i += 2) {
        gaps.push_back({begin, quotes_[i]});
        begin = quotes_[i + 1] + 1;
    }
    gaps.push_back({begin, value_.end - 1});
    return gaps;
}

std::size_t BracketedValue::FindBare(const Gap& gap, std::string_view separators) const {
    for (std::size_t offset = gap.begin; offset < gap.end; ++offset) {
        if (ReadingAt(offset) == PlainReading::Code &&
            separators.find(linted_.Text()[offset]) == std::string_view::npos) {
            return offset;
        }
    }
    return kNoOffset;
}

std::vector<BracketedValue> BracketedValuesOf(const LintedText& linted) {
    std::vector<BracketedValue> values;
    for (const OutlinedValue& value : linted.Outline().values) {
        if (value.kind == ConfigValueKind::List || value.kind == ConfigValueKind::PairTable) {
            values.emplace_back(linted, value);
        }
    }
    return values;
}

}  // namespace sealkeeper
