#include "inspect/report/console.h"

#include <gtest/gtest.h>

#include "app/console_log.h"
#include "inspect/report/logged_error.h"
#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

class QuietLog : public testing::Test {
  protected:
    QuietLog() {
        KeepLogQuiet();
        ForgetLoggedError();
    }
    ~QuietLog() override { SendLogTo(nullptr); }
};

TEST_F(QuietLog, WritesNothing) {
    CapturedOutput output;
    Log(LogLevel::Error, "a\n");
    WriteUntagged("b\n");
    EndConsoleLine();
    EXPECT_EQ(output.Take(), "");
}

TEST_F(QuietLog, KeepsTheFirstAndTheLastErrorWithoutTheirLineFeeds) {
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
