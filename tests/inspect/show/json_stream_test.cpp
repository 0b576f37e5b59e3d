#include "inspect/show/json_stream.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <vector>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

// Streams a document whose last two members are arrays.
std::string Streamed(const Json& head, const Json& first, const Json& second) {
    test::CapturedOutput output;
    Console console;
    JsonStream stream(console, head);
    for (const auto& [name, array] : {std::pair("first", &first), std::pair("second", &second)}) {
        stream.BeginArray(name);
        for (const Json& element : *array) {
            stream.Add(element);
        }
        stream.EndArray();
    }
    stream.Finish();
    return output.Take();
}

TEST(JsonStream, WritesWhatTheWholeDocumentWouldBe) {
    const Json head = {{"a", 1}, {"nested", {{"b", "}\n"}, {"c", Json::array()}}}};
    const std::vector<Json> arrays = {
        Json::array(),
        Json::array({1}),
        Json::array({"line\nfeed", Json::object(), {{"x", {1, 2}}, {"y", nullptr}}}),
    };
    for (const Json& first : arrays) {
        for (const Json& second : arrays) {
            Json whole = head;
            whole["first"] = first;
            whole["second"] = second;
            EXPECT_EQ(Streamed(head, first, second), JsonText(whole));
        }
    }
}

TEST(JsonStream, WritesElementsWithAnArrayOfTheirOwn) {
    const Json head = {{"a", 1}};
    const std::vector<Json> elements = {
        {{"x", {{"y", 1}}}, {"inner", Json::array()}},
        {{"x", "line\nfeed"}, {"inner", {1, {{"deep", {2, 3}}}, "z"}}},
    };
    Json whole = head;
    whole["array"] = elements;
    test::CapturedOutput output;
    Console console;
    JsonStream stream(console, head);
    stream.BeginArray("array");
    for (const Json& element : elements) {
        stream.BeginElement({{"x", element["x"]}}, "inner");
        for (const Json& inner : element["inner"]) {
            stream.AddToElement(inner);
        }
        stream.EndElement();
    }
    stream.EndArray();
    stream.Finish();
    EXPECT_EQ(output.Take(), JsonText(whole));
}

}  // namespace
}  // namespace sealkeeper
