#include "inspect/rules/rules_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "inspect/report/json.h"

namespace sealkeeper {
namespace {

TEST(RulesJson, HasTheWholeReport) {
    const RulesReport report{"game.cfg",
                             "/game",
                             {{".git/index", 3, LeftOutReason::Hidden},
                              {"a", 5000000000, {}},
                              {"b", 7, LeftOutReason::NotRegularFile}},
                             {{12, 5, "There.", "Mend it."}}};
    EXPECT_EQ(RulesJson(report), R"({
  "configFile": "game.cfg",
  "gameDirectory": "/game",
  "refusal": null,
  "files": [
    {
      "path": ".git/index",
      "bytes": 3,
      "state": "left out",
      "reason": "hidden"
    },
    {
      "path": "a",
      "bytes": 5000000000,
      "state": "sealed",
      "reason": null
    },
    {
      "path": "b",
      "bytes": 7,
      "state": "left out",
      "reason": "not a regular file"
    }
  ],
  "warnings": [
    {
      "line": 12,
      "column": 5,
      "message": "There.",
      "cure": "Mend it."
    }
  ],
  "totals": {
    "sealed": {
      "files": 1,
      "bytes": 5000000000
    },
    "leftOut": {
      "files": 2,
      "bytes": 10
    },
    "byReason": {
      "hidden": {
        "files": 1,
        "bytes": 3
      },
      "not a regular file": {
        "files": 1,
        "bytes": 7
      }
    }
  }
}
)");
}

TEST(RulesJson, SaysWhyGenerateWouldFail) {
    const Json json = Json::parse(RulesJson(
        {"game.cfg", "/game", {}, {}, Refusal{ResultCode::InitFailedConfig, "Because."}}));
    EXPECT_EQ(json.at("refusal"),
              (Json{{"code", 4}, {"result", "InitFailedConfig"}, {"message", "Because."}}));
}

TEST(RulesJson, HasEmptyListsForNothing) {
    const Json json = Json::parse(RulesJson({"game.cfg", "/game", {}, {}}));
    EXPECT_EQ(json["files"].dump(), "[]");
    EXPECT_EQ(json["warnings"].dump(), "[]");
    EXPECT_EQ(json["totals"]["byReason"].dump(), "{}");
}

TEST(RulesJson, GivesNoPlaceToAWarningWithoutOne) {
    const Json json =
        Json::parse(RulesJson({"game.cfg", "/game", {}, {{0, 0, "Nowhere.", "Cure it."}}}));
    EXPECT_EQ(json["warnings"][0].dump(),
              R"({"line":null,"column":null,"message":"Nowhere.","cure":"Cure it."})");
}

TEST(RulesJson, KeepsTheBytesOfAPathThatIsNoUtf8) {
    const Json json = Json::parse(RulesJson({"game.cfg", "/game", {{"a\xFF\xC3(", 0, {}}}, {}}));
    EXPECT_EQ(json["files"][0]["path"], "a\uFFFD\uFFFD(");
    EXPECT_EQ(json["files"][0]["pathHex"], "61ffc328");
}

TEST(RulesJson, KeepsTheBytesOfWhatWasLookedAt) {
    const Json json = Json::parse(RulesJson({"c\xFF", "/g\xFE", {}, {}}));
    EXPECT_EQ(json["configFile"], "c\uFFFD");
    EXPECT_EQ(json["configFileHex"], "63ff");
    EXPECT_EQ(json["gameDirectory"], "/g\uFFFD");
    EXPECT_EQ(json["gameDirectoryHex"], "2f67fe");
}

TEST(RulesJson, HasNoBytesOfAPathThatIsUtf8) {
    const Json json =
        Json::parse(RulesJson({"game.cfg", "/game", {{"\u00e4\uFFFD\n", 0, {}}}, {}}));
    EXPECT_EQ(json["files"][0]["path"], "\u00e4\uFFFD\n");
    EXPECT_FALSE(json["files"][0].contains("pathHex"));
}

}  // namespace
}  // namespace sealkeeper
