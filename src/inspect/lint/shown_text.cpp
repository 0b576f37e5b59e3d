#include "inspect/lint/shown_text.h"

#include <algorithm>
#include <cstddef>

#include "inspect/report/name_list.h"

namespace sealkeeper {
namespace {

constexpr std::size_t kLongestShown = 60;
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

std::string ShownValue(std::string_view text) {
    return '"' + Cut(text) + '"';
}

std::string_view TrimmedBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

bool IsBlank(std::string_view text) {
    return TrimmedBlanks(text).empty();
}

}  // namespace sealkeeper
