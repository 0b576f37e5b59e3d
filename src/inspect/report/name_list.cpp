#include "inspect/report/name_list.h"

#include <algorithm>
#include <string_view>

#include "inspect/report/number_text.h"

namespace sealkeeper {
namespace {

std::string ListOf(const std::vector<std::string>& names, std::size_t most,
                   std::string_view quote) {
    const std::size_t shown = std::min(names.size(), most);
    const std::size_t others = names.size() - shown;
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        const bool isLastOfAll = i + 1 == names.size();
        text += i == 0 ? "" : isLastOfAll ? " and " : ", ";
        text.append(quote).append(names[i]).append(quote);
    }
    return others == 0 ? text : text + " and " + GroupedNumber(others) + " more";
}

}  // namespace

std::string NameList(const std::vector<std::string>& names, std::size_t most) {
    return ListOf(names, most, "");
}

std::string QuotedNameList(const std::vector<std::string>& names, std::size_t most) {
    return ListOf(names, most, "'");
}

}  // namespace sealkeeper
