#include "inspect/x509/utc_time.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

using std::chrono::seconds;

// From date(1): date -u -d "2026-03-01 12:34:56" +%s
constexpr UtcTime kMarch{seconds(1772368496)};

TEST(UtcTime, IsReadFromTheLibrarysFields) {
    EXPECT_EQ(UtcTimeOf({2026, 3, 1, 12, 34, 56}), kMarch);
    // date -u -d "2024-02-29" +%s
    EXPECT_EQ(UtcTimeOf({2024, 2, 29, 0, 0, 0}), UtcTime(seconds(1709164800)));
}

TEST(UtcTime, IsNoneWhereTheLibraryLeftZeros) {
    EXPECT_EQ(UtcTimeOf({0, 0, 0, 0, 0, 0}), std::nullopt);
}

TEST(UtcTime, IsWrittenForPeopleAndForPrograms) {
    EXPECT_EQ(TimeText(kMarch), "2026-03-01 12:34:56 UTC");
    EXPECT_EQ(IsoTimeText(kMarch), "2026-03-01T12:34:56Z");
    EXPECT_EQ(IsoTimeText(UtcTime(seconds(-1))), "1969-12-31T23:59:59Z");
}

struct Span {
    seconds left;
    std::int64_t daysLeft;
    const char* text;
};

TEST(UtcTime, DaysLeft) {
    constexpr std::int64_t kDay = 86400;
    const std::vector<Span> spans = {
        {seconds(3650 * kDay + 5), 3650, "3,650 days left"},
        {seconds(kDay), 1, "1 day left"},
        {seconds(kDay - 1), 0, "less than a day left"},
        {seconds(0), 0, "less than a day left"},
        {seconds(-1), -1, "ended less than a day ago"},
        {seconds(-kDay), -1, "ended 1 day ago"},
        {seconds(-12 * kDay - 1), -13, "ended 12 days ago"},
    };
    for (const Span& span : spans) {
        EXPECT_EQ(DaysLeft(kMarch + span.left, kMarch), span.daysLeft) << span.text;
        EXPECT_EQ(DaysLeftText(kMarch + span.left, kMarch), span.text);
    }
}

TEST(UtcTime, TheLastSecondIsNotPast) {
    EXPECT_FALSE(IsPast(kMarch, kMarch));
    EXPECT_TRUE(IsPast(kMarch, kMarch + seconds(1)));
}

}  // namespace
}  // namespace sealkeeper
