#include "inspect/report/console.h"

#include <gtest/gtest.h>

#include "app/console_log.h"
#include "inspect/report/logged_error.h"
#include "support/captured_output.h"
#include "support/quiet_log.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

TEST(QuietLog, WritesNothing) {
    const test::QuietLog quiet;
    CapturedOutput output;
    Log(LogLevel::Error, "a\n");
    WriteUntagged("b\n");
    EndConsoleLine();
    EXPECT_EQ(output.Take(), "");
}

TEST(QuietLog, KeepsTheFirstAndTheLastErrorWithoutTheirLineFeeds) {
    const test::QuietLog quiet;
    Log(LogLevel::Error, "first\n");
    Log(LogLevel::Error, "second '%s'.\n", "x");
    Log(LogLevel::Warning, "no error\n");
    EXPECT_EQ(LastLoggedError(), "second 'x'.");
    EXPECT_EQ(FirstLoggedError(), "first");
    ForgetLoggedError();
    EXPECT_EQ(LastLoggedError(), "");
    EXPECT_EQ(FirstLoggedError(), "");
}

TEST(InspectConsole, LeavesForeignTextAloneAndHasNoColourOffATerminal) {
    CapturedOutput output;
    const Console console;
    EXPECT_EQ(console.Foreign("a\nb"), "a\nb");
    EXPECT_EQ(console.Styled(Style::Bad, "a"), "a");
    EXPECT_EQ(output.Take(), "");
}

}  // namespace
}  // namespace sealkeeper
