#include "inspect/report/json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace sealkeeper {
namespace {

TEST(JsonText, KeepsTheOrderOfMembersAndEndsInALineFeed) {
    Json document;
    document["b"] = 1;
    document["a"] = "x";
    EXPECT_EQ(JsonText(document), "{\n  \"b\": 1,\n  \"a\": \"x\"\n}\n");
}

TEST(JsonText, ReplacesWhatIsNoUtf8) {
    EXPECT_EQ(JsonText(Json("a\xFF")), "\"a\xEF\xBF\xBD\"\n");
}

TEST(JsonFileName, KeepsTheBytesOfWhatIsNoUtf8) {
    Json document;
    AddFileName(document, "path", "a\xFF");
    AddFileName(document, "target", "b");
    EXPECT_EQ(document, (Json{{"path", "a\xEF\xBF\xBD"}, {"pathHex", "61ff"}, {"target", "b"}}));
}

}  // namespace
}  // namespace sealkeeper
