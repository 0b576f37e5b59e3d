#include "app/console_log.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ScopedLogThreshold;

std::string Logged(LogLevel level, const std::string& text) {
    CapturedOutput output;
    Log(level, "%s", text.c_str());
    return output.Take();
}

TEST(ConsoleLog, TagsLevelsUpToInformationByDefault) {
    EXPECT_EQ(Logged(LogLevel::Error, "a\n"), "[Err!] a\n");
    EXPECT_EQ(Logged(LogLevel::Warning, "a\n"), "[Warn] a\n");
    EXPECT_EQ(Logged(LogLevel::Info, "a\n"), "[Info] a\n");
    EXPECT_EQ(Logged(LogLevel::Verbose, "a\n"), "");
    EXPECT_EQ(Logged(LogLevel::Trace, "a\n"), "");
}

TEST(ConsoleLog, ShowsVerboseButNotTraceWithRaisedThreshold) {
    const ScopedLogThreshold verbose(LogLevel::Verbose);
    EXPECT_EQ(Logged(LogLevel::Verbose, "a\n"), "[Verb] a\n");
    EXPECT_EQ(Logged(LogLevel::Trace, "a\n"), "");
}

TEST(ConsoleLog, TraceCarriesTheVerboseTag) {
    const ScopedLogThreshold trace(LogLevel::Trace);
    EXPECT_EQ(Logged(LogLevel::Trace, "a"), "[Verb] a");
}

TEST(ConsoleLog, LevelZeroAlwaysPrintsAsInvalid) {
    EXPECT_EQ(Logged(static_cast<LogLevel>(0), "a"), "[<invalid>] a");
}

TEST(ConsoleLog, LevelSixIsAboveEveryThresholdOfTheProgram) {
    const ScopedLogThreshold verbose(LogLevel::Verbose);
    EXPECT_EQ(Logged(static_cast<LogLevel>(6), "a"), "");
}

TEST(ConsoleLog, ShowsBackslashesOfFormatAndArgumentsAsSlashes) {
    CapturedOutput output;
    Log(LogLevel::Warning, "a\\b %s", "c\\d");
    EXPECT_EQ(output.Take(), "[Warn] a/b c/d");
}

TEST(ConsoleLog, AddsNoLineFeed) {
    EXPECT_EQ(Logged(LogLevel::Warning, "a\\b"), "[Warn] a/b");
}

TEST(ConsoleLog, EmptyMessagePrintsNothing) {
    EXPECT_EQ(Logged(LogLevel::Error, ""), "");
}

TEST(ConsoleLog, MessageThatCannotBeFormattedPrintsNothing) {
    // Not a Unicode character.
    const std::wstring noText(1, static_cast<wchar_t>(0x110000));
    CapturedOutput output;
    Log(LogLevel::Error, "before %ls behind\n", noText.c_str());
    EXPECT_EQ(output.Take(), "");
}

std::string g_taken;  // NOLINT: a sink has no state of its own

void Take(LogLevel level, std::string_view message) {
    g_taken += std::to_string(static_cast<unsigned>(level)) + " " + std::string(message);
}

TEST(ConsoleLog, ASinkTakesWhatIsShownInPlaceOfStandardOutput) {
    g_taken.clear();
    CapturedOutput output;
    SendLogTo(Take);
    Log(LogLevel::Error, "a\\b %d\n", 5);
    Log(LogLevel::Verbose, "not shown\n");
    WriteUntagged("untagged");
    EndConsoleLine();
    SendLogTo(nullptr);
    Log(LogLevel::Info, "after\n");
    EXPECT_EQ(output.Take(), "[Info] after\n");
    EXPECT_EQ(g_taken, "1 a/b 5\n");
}

TEST(ConsoleLog, CutsAtItsBuffer) {
    EXPECT_EQ(Logged(LogLevel::Info, std::string(4095, 'x')), "[Info] " + std::string(4095, 'x'));
    EXPECT_EQ(Logged(LogLevel::Info, std::string(4096, 'x')), "[Info] " + std::string(4095, 'x'));
    EXPECT_EQ(Logged(LogLevel::Info, std::string(9000, 'x')), "[Info] " + std::string(4095, 'x'));
}

}  // namespace
}  // namespace sealkeeper
