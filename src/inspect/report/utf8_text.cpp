#include "inspect/report/utf8_text.h"

#include <string_view>

#include "platform/utf8_character.h"

namespace sealkeeper {
namespace {

constexpr unsigned char kLastAscii = 0x7F;

}  // namespace

std::string WellFormedUtf8(const std::string& bytes) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    std::string text;
    std::string_view character;
    for (std::string_view rest = bytes; !rest.empty(); rest.remove_prefix(character.size())) {
        character = FirstUtf8Character(rest);
        const bool isNoUtf8 =
            character.size() == 1 && static_cast<unsigned char>(character[0]) > kLastAscii;
        text += isNoUtf8 ? kReplacement : character;
    }
    return text;
}

bool IsUtf8(const std::string& bytes) {
    return WellFormedUtf8(bytes) == bytes;
}

}  // namespace sealkeeper
