#include "inspect/rules/utf8_text.h"

#include <nlohmann/json.hpp>

#include "inspect/report/json.h"

namespace sealkeeper {

std::string WellFormedUtf8(const std::string& bytes) {
    return Json::parse(JsonText(bytes)).get<std::string>();
}

std::string HexText(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        text += kDigits[byte / 16U];
        text += kDigits[byte % 16U];
    }
    return text;
}

}  // namespace sealkeeper
