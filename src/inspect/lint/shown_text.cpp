#include "inspect/lint/shown_text.h"

#include <algorithm>
#include <cstddef>

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
    const std::size_t shown = std::min(names.size(), kMostShownNames);
    const std::size_t others = names.size() - shown;
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        const bool isLast = i + 1 == shown && others == 0;
        text += (i == 0 ? "" : isLast ? " and " : ", ") + ShownName(names[i]);
    }
    return others == 0 ? text : text + " and " + std::to_string(others) + " more";
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
