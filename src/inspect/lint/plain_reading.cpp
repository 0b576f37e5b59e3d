#include "inspect/lint/plain_reading.h"

#include <algorithm>
#include <cstddef>

namespace sealkeeper {
namespace {

struct Stretch {
    PlainReading reading;
    std::size_t end;
};

std::size_t PastNext(std::string_view text, std::string_view what, std::size_t from) {
    const std::size_t found = text.find(what, from);
    return found == std::string_view::npos ? text.size() : found + what.size();
}

// After the closing quote, or at the end of the line if that comes first.
std::size_t QuoteEnd(std::string_view text, std::size_t begin) {
    const std::size_t end = std::min(text.find_first_of("\"\n", begin + 1), text.size());
    return end < text.size() && text[end] == '"' ? end + 1 : end;
}

Stretch StretchAt(std::string_view text, std::size_t begin) {
    const std::string_view rest = text.substr(begin);
    if (rest.front() == '"') {
        return {PlainReading::Quoted, QuoteEnd(text, begin)};
    }
    if (rest.front() == '#' || rest.starts_with("//")) {
        return {PlainReading::Comment, std::min(text.find('\n', begin), text.size())};
    }
    if (rest.starts_with("/*")) {
        return {PlainReading::Comment, PastNext(text, "*/", begin + 2)};
    }
    return {PlainReading::Code, begin + 1};
}

}  // namespace

std::vector<PlainReading> ReadPlainly(std::string_view text) {
    std::vector<PlainReading> readings;
    readings.reserve(text.size());
    while (readings.size() < text.size()) {
        const Stretch stretch = StretchAt(text, readings.size());
        readings.resize(stretch.end, stretch.reading);
    }
    return readings;
}

std::string WithoutComments(std::string_view text) {
    const std::vector<PlainReading> readings = ReadPlainly(text);
    std::string code(text);
    for (std::size_t i = 0; i < code.size(); ++i) {
        if (readings[i] == PlainReading::Comment && code[i] != '\n') {
            code[i] = ' ';
        }
    }
    return code;
}

}  // namespace sealkeeper
