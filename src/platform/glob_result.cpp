#include "platform/glob_result.h"

#include <string_view>

namespace sealkeeper {

std::string LiteralGlobPattern(const std::string& path) {
    constexpr std::string_view kPatternCharacters = "*?[]\\";
    std::string pattern;
    for (const char character : path) {
        if (kPatternCharacters.find(character) != std::string_view::npos) {
            pattern += '\\';
        }
        pattern += character;
    }
    return pattern;
}

}  // namespace sealkeeper
