#include "inspect/show/json_stream.h"

#include <nlohmann/json.hpp>
#include <string>

namespace sealkeeper {
namespace {

constexpr std::string_view kElementIndent = "\n    ";

// Line feeds stand between the tokens alone: those in strings are escaped.
std::string Indented(const std::string& document) {
    std::string text;
    for (const char character : document.substr(0, document.size() - 1)) {
        if (character == '\n') {
            text += kElementIndent;
        } else {
            text += character;
        }
    }
    return text;
}

}  // namespace

JsonStream::JsonStream(Console& console, const Json& head) : console_(console) {
    constexpr std::string_view kEnd = "\n}\n";
    const std::string text = JsonText(head);
    console_.Write(text.substr(0, text.size() - kEnd.size()));
}

void JsonStream::BeginArray(std::string_view name) {
    hasElements_ = false;
    console_.Write(",\n  " + Json(name).dump() + ": [");
}

void JsonStream::Add(const Json& element) {
    console_.Write((hasElements_ ? "," : "") + std::string(kElementIndent) +
                   Indented(JsonText(element)));
    hasElements_ = true;
}

void JsonStream::EndArray() {
    console_.Write(hasElements_ ? "\n  ]" : "]");
}

void JsonStream::Finish() {
    console_.Write("\n}\n");
}

}  // namespace sealkeeper
