#include "config/config_values.h"

#include <cstddef>

namespace sealkeeper {
namespace {

// Takes the text between the next two double quotes; `text` is left after the closing one. Nothing
// when there are no two more quotes.
std::optional<std::string_view> TakeQuoted(std::string_view& text) {
    const std::size_t opening = text.find('"');
    if (opening == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t closing = text.find('"', opening + 1);
    if (closing == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view quoted = text.substr(opening + 1, closing - opening - 1);
    text.remove_prefix(closing + 1);
    return quoted;
}

}  // namespace

std::optional<QuotedTexts> FindListElements(std::string_view text) {
    QuotedTexts elements;
    while (const auto quoted = TakeQuoted(text)) {
        if (quoted->empty()) {
            continue;
        }
        if (quoted->find('\n') != std::string_view::npos) {
            return std::nullopt;
        }
        elements.push_back(*quoted);
    }
    return elements;
}

QuotedTexts FindPairs(std::string_view text) {
    QuotedTexts pairs;
    while (true) {
        const auto name = TakeQuoted(text);
        if (!name || name->empty()) {
            return pairs;
        }
        const auto value = TakeQuoted(text);
        if (!value || value->empty()) {
            return pairs;
        }
        pairs.insert(pairs.end(), {*name, *value});
    }
}

std::int64_t ParseNumber(std::string_view text) {
    std::uint32_t number = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') {
            break;
        }
        number = number * 10U + static_cast<std::uint32_t>(digit - '0');
    }
    return static_cast<std::int32_t>(number);
}

std::string UnescapeBackslashes(const std::string& text) {
    std::string unescaped;
    for (const char byte : text) {
        if (byte != '\\' || !unescaped.ends_with('\\')) {
            unescaped.push_back(byte);
        }
    }
    return unescaped;
}

}  // namespace sealkeeper
