#include "inspect/lint/shown_text.h"

#include <algorithm>
#include <cstddef>

#include "inspect/report/name_list.h"

namespace sealkeeper {
namespace {

constexpr std::size_t kMostShownNames = 4;
constexpr std::string_view kBlanks = " \t\r\n;";

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string Cut(std::string_view text) {
    if (text.size() <= kLongestShown) {
        return std::string(text);
    }
    std::size_t length = kLongestShown;
    while (length > 0 && ContinuesCharacter(text[length])) {
        --length;
    }
    return std::string(text.substr(0, length)) + "...";
}

}  // namespace

std::string ShownName(std::string_view text) {
    return "'" + Cut(text) + "'";
}

std::string ShownNames(const std::vector<std::string>& names) {
    std::vector<std::string> shown(names.size());
    std::transform(names.begin(), names.end(), shown.begin(), ShownName);
    return NameList(shown, kMostShownNames);
}

std::string WholeValue(std::string_view text) {
    return '"' + std::string(text) + '"';
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

std::string_view TrimmedBlanks(std::string_view text) {
    const std::string_view rest = WithoutLeadingBlanks(text);
    return rest.substr(0, rest.find_last_not_of(kBlanks) + 1);
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

}  // namespace sealkeeper
