#include "inspect/rules/warning_words.h"

#include <utility>

namespace sealkeeper {

RuleWarning WarningAt(TextPlace place, std::string message, std::string cure) {
    return {place.line, place.column, std::move(message), std::move(cure)};
}

const char* ByNumber(std::size_t count, const char* singular, const char* plural) {
    return count == 1 ? singular : plural;
}

std::string QuotedForRules(const std::set<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "\"" : ", \"") + name + "\"";
    }
    return list;
}

}  // namespace sealkeeper
