#include "inspect/report/progress_bar.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "inspect/report/scoped_terminal.h"
#include "support/fake_clock.h"

namespace sealkeeper {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr std::size_t kWide = 80;

TEST(ProgressLine, ShowsBarShareRateAndTimeLeft) {
    EXPECT_EQ(ProgressLine({500'000'000, 1'000'000'000, Seconds(2)}, kWide),
              "[===============>              ]  50 %  250.0 MB/s  0:02 left");
}

TEST(ProgressLine, ShowsNoRateBeforeThereIsOne) {
    EXPECT_EQ(ProgressLine({0, 1000, Seconds(5)}, kWide), "[>                             ]   0 %");
    EXPECT_EQ(ProgressLine({10, 1000, Seconds(0.1)}, kWide),
              "[>                             ]   1 %");
}

TEST(ProgressLine, IsFullAtTheEnd) {
    EXPECT_EQ(ProgressLine({1000, 1000, Seconds(1)}, kWide),
              "[==============================] 100 %  1.0 kB/s  0:00 left");
}

TEST(ProgressLine, NothingToDoIsDone) {
    EXPECT_EQ(ProgressLine({0, 0, Seconds(0)}, kWide), "[==============================] 100 %");
}

TEST(ProgressLine, MoreThanThereWasToDoIsDone) {
    EXPECT_EQ(ProgressLine({2000, 1000, Seconds(2)}, kWide),
              "[==============================] 100 %  1.0 kB/s  0:00 left");
}

TEST(ProgressLine, ShowsHoursWhereThereAreSome) {
    EXPECT_EQ(ProgressLine({1000, 3'724'000, Seconds(1)}, kWide),
              "[>                             ]   0 %  1.0 kB/s  1:02:03 left");
}

TEST(ProgressLine, ShrinksToWhatANarrowTerminalHasRoomFor) {
    const Progress half{500'000'000, 1'000'000'000, Seconds(2)};
    EXPECT_EQ(ProgressLine(half, 62),
              "[===============>              ]  50 %  250.0 MB/s  0:02 left");
    EXPECT_EQ(ProgressLine(half, 61),
              "[==============>              ]  50 %  250.0 MB/s  0:02 left");
    EXPECT_EQ(ProgressLine(half, 37), "[==>  ]  50 %  250.0 MB/s  0:02 left");
    EXPECT_EQ(ProgressLine(half, 36), "[=============>             ]  50 %");
    EXPECT_EQ(ProgressLine(half, 14), "[==>  ]  50 %");
    EXPECT_EQ(ProgressLine(half, 13), " 50 %");
    EXPECT_EQ(ProgressLine(half, 6), " 50 %");
    EXPECT_EQ(ProgressLine(half, 5), "");
}

TEST(ProgressLine, FitsATerminalOfAnyWidth) {
    const Progress farFromDone{1000, 3'724'000'000, Seconds(1)};
    for (std::size_t columns = 1; columns <= kWide; ++columns) {
        EXPECT_LT(ProgressLine(farFromDone, columns).size(), columns);
    }
}

// What a bar shows of the next byte `after` that time.
std::string ShownAfter(std::chrono::nanoseconds after, test::FakeClock& clock, ProgressBar& bar,
                       test::ScopedTerminal& terminal) {
    clock.Advance(after);
    bar.Advance(1);
    return terminal.Written();
}

TEST(ProgressBar, IsDrawnTenTimesASecondAtMostAndClearedAtItsEnd) {
    using std::chrono::milliseconds;
    using std::chrono::nanoseconds;
    test::ScopedTerminal terminal(STDERR_FILENO);
    const test::ScopedVariable kind("TERM", "xterm");
    const test::ScopedVariable columns("COLUMNS", "20");
    test::FakeClock clock;
    {
        ProgressBar bar(4);
        EXPECT_EQ(ShownAfter(milliseconds(100) - nanoseconds(1), clock, bar, terminal), "");
        EXPECT_EQ(ShownAfter(nanoseconds(1), clock, bar, terminal), "\r\x1b[K[=====>     ]  50 %");
        EXPECT_EQ(ShownAfter(milliseconds(100) - nanoseconds(1), clock, bar, terminal), "");
        EXPECT_EQ(ShownAfter(nanoseconds(1), clock, bar, terminal), "\r\x1b[K[===========] 100 %");
    }
    EXPECT_EQ(terminal.Written(), "\r\x1b[K");
}

}  // namespace
}  // namespace sealkeeper
