#include "inspect/report/progress_bar.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

using Seconds = std::chrono::duration<double>;

TEST(ProgressLine, ShowsBarShareRateAndTimeLeft) {
    EXPECT_EQ(ProgressLine({500'000'000, 1'000'000'000, Seconds(2)}),
              "[===============>              ]  50 %  250.0 MB/s  0:02 left");
}

TEST(ProgressLine, ShowsNoRateBeforeThereIsOne) {
    EXPECT_EQ(ProgressLine({0, 1000, Seconds(5)}), "[>                             ]   0 %");
    EXPECT_EQ(ProgressLine({10, 1000, Seconds(0.1)}), "[>                             ]   1 %");
}

TEST(ProgressLine, IsFullAtTheEnd) {
    EXPECT_EQ(ProgressLine({1000, 1000, Seconds(1)}),
              "[==============================] 100 %  1.0 kB/s  0:00 left");
}

TEST(ProgressLine, NothingToDoIsDone) {
    EXPECT_EQ(ProgressLine({0, 0, Seconds(0)}), "[==============================] 100 %");
}

TEST(ProgressLine, MoreThanThereWasToDoIsDone) {
    EXPECT_EQ(ProgressLine({2000, 1000, Seconds(2)}),
              "[==============================] 100 %  1.0 kB/s  0:00 left");
}

TEST(ProgressLine, ShowsHoursWhereThereAreSome) {
    EXPECT_EQ(ProgressLine({1000, 3'724'000, Seconds(1)}),
              "[>                             ]   0 %  1.0 kB/s  1:02:03 left");
}

}  // namespace
}  // namespace sealkeeper
