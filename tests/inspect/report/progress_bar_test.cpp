#include "inspect/report/progress_bar.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace sealkeeper
