#include "inspect/report/junit.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

using Outcome = JunitCase::Outcome;

TEST(Junit, WritesSuitesWithTheirCountsAndOutcomes) {
    const std::string text =
        JunitText("all", {{"first",
                           {{"c", "passed", Outcome::Passed, "", ""},
                            {"c", "failed", Outcome::Failure, "24", "Size"},
                            {"c", "skipped", Outcome::Skipped, "", "not asked for"}}},
                          {"second", {{"c", "broken", Outcome::Error, "9", "Invalid"}}},
                          {"empty", {}}});
    EXPECT_EQ(text, R"(<?xml version="1.0" encoding="UTF-8"?>
<testsuites name="all" tests="4" failures="1" errors="1" skipped="1">
  <testsuite name="first" tests="3" failures="1" errors="0" skipped="1">
    <testcase classname="c" name="passed" />
    <testcase classname="c" name="failed">
      <failure type="24" message="Size" />
    </testcase>
    <testcase classname="c" name="skipped">
      <skipped message="not asked for" />
    </testcase>
  </testsuite>
  <testsuite name="second" tests="1" failures="0" errors="1" skipped="0">
    <testcase classname="c" name="broken">
      <error type="9" message="Invalid" />
    </testcase>
  </testsuite>
  <testsuite name="empty" tests="0" failures="0" errors="0" skipped="0" />
</testsuites>
)");
}

TEST(Junit, EscapesTexts) {
    const std::string text =
        JunitText("a", {{"<&>\"'", {{"\x01", "\xFF", Outcome::Failure, "1", "\n"}}}});
    EXPECT_NE(text.find("<testsuite name=\"&lt;&amp;>&quot;'\""), std::string::npos) << text;
    EXPECT_NE(text.find("classname=\"\\x01\" name=\"\\xff\""), std::string::npos) << text;
    EXPECT_NE(text.find("message=\"\\x0a\""), std::string::npos) << text;
}

}  // namespace
}  // namespace sealkeeper
