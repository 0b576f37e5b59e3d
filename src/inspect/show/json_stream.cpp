#include "inspect/show/json_stream.h"

#include <nlohmann/json.hpp>
#include <string>

namespace sealkeeper {
namespace {

constexpr std::string_view kMemberIndent = "\n  ";
constexpr std::string_view kElementIndent = "\n    ";
constexpr std::string_view kInnerMemberIndent = "\n      ";
constexpr std::string_view kInnerElementIndent = "\n        ";

// Indents the lines of `json` and drops the final line feed. Line feeds occur only between tokens;
// those in strings are escaped.
std::string Indented(const Json& json, std::string_view indent) {
    std::string text = JsonText(json);
    text.pop_back();
    std::string indented;
    for (const char character : text) {
        if (character == '\n') {
            indented += indent;
        } else {
            indented += character;
        }
    }
    return indented;
}

// As above, without the closing brace of the object.
std::string IndentedMembers(const Json& object, std::string_view indent) {
    const std::string text = Indented(object, indent);
    return text.substr(0, text.size() - indent.size() - 1);
}

std::string ArrayStart(std::string_view name, std::string_view indent) {
    return "," + std::string(indent) + Json(name).dump() + ": [";
}

std::string ArrayEnd(bool hasElements, std::string_view indent) {
    return hasElements ? std::string(indent) + "]" : "]";
}

}  // namespace

JsonStream::JsonStream(Console& console, const Json& head) : console_(console) {
    console_.Write(IndentedMembers(head, "\n"));
}

void JsonStream::BeginValue(bool& hasOthers, std::string_view indent) {
    console_.Write(hasOthers ? "," : "");
    console_.Write(indent);
    hasOthers = true;
}

void JsonStream::BeginArray(std::string_view name) {
    hasElements_ = false;
    console_.Write(ArrayStart(name, kMemberIndent));
}

void JsonStream::Add(const Json& element) {
    BeginValue(hasElements_, kElementIndent);
    console_.Write(Indented(element, kElementIndent));
}

void JsonStream::EndArray() {
    console_.Write(ArrayEnd(hasElements_, kMemberIndent));
}

void JsonStream::BeginElement(const Json& head, std::string_view name) {
    BeginValue(hasElements_, kElementIndent);
    hasInnerElements_ = false;
    console_.Write(IndentedMembers(head, kElementIndent) + ArrayStart(name, kInnerMemberIndent));
}

void JsonStream::AddToElement(const Json& element) {
    BeginValue(hasInnerElements_, kInnerElementIndent);
    console_.Write(Indented(element, kInnerElementIndent));
}

void JsonStream::EndElement() {
    console_.Write(ArrayEnd(hasInnerElements_, kInnerMemberIndent) + std::string(kElementIndent) +
                   "}");
}

void JsonStream::Finish() {
    console_.Write("\n}\n");
}

}  // namespace sealkeeper
