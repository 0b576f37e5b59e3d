#include "inspect/credentials/detail_text.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace sealkeeper {
namespace {

using std::chrono::seconds;

constexpr UtcTime kToday{seconds(1'800'000'000)};
constexpr std::int64_t kDay = 86400;

TEST(DetailText, DaysLeft) {
    const std::vector<std::pair<seconds, std::string>> spans = {
        {seconds(3650 * kDay + 5), "3,650 days left"},  {seconds(kDay), "1 day left"},
        {seconds(kDay - 1), "less than a day left"},    {seconds(0), "less than a day left"},
        {seconds(-1), "ended less than a day ago"},     {seconds(-kDay), "ended 1 day ago"},
        {seconds(-12 * kDay - 1), "ended 12 days ago"},
    };
    for (const auto& [left, text] : spans) {
        EXPECT_EQ(DaysLeftText(kToday + left, kToday), text);
    }
}

TEST(DetailText, ASpanThatHasNotBegunHasNoDaysLeft) {
    EXPECT_EQ(SpanText(kToday + seconds(1), kToday + seconds(kDay), kToday),
              "2027-01-15 08:00:01 UTC to 2027-01-16 08:00:00 UTC, not begun");
    EXPECT_EQ(SpanText(kToday, kToday + seconds(kDay), kToday),
              "2027-01-15 08:00:00 UTC to 2027-01-16 08:00:00 UTC, 1 day left");
}

}  // namespace
}  // namespace sealkeeper
