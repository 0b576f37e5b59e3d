#include "inspect/rules/lint_text.h"

#include <algorithm>
#include <utility>

#include "inspect/report/number_text.h"

namespace sealkeeper {

RuleWarning WarningAt(TextPlace place, std::string message, std::string cure) {
    return {place.line, place.column, std::move(message), std::move(cure)};
}

std::string Quoted(const std::vector<std::string>& names) {
    constexpr std::size_t kMostNamed = 3;
    const std::size_t named = std::min(names.size(), kMostNamed);
    std::string text;
    for (std::size_t i = 0; i < named; ++i) {
        const bool isLastOfAll = i + 1 == names.size();
        if (i > 0) {
            text += isLastOfAll ? " and " : ", ";
        }
        text += "'" + names[i] + "'";
    }
    if (names.size() > named) {
        text += " and " + GroupedNumber(names.size() - named) + " more";
    }
    return text;
}

const char* ByNumber(std::size_t count, const char* singular, const char* plural) {
    return count == 1 ? singular : plural;
}

}  // namespace sealkeeper
