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

TEST(UtcTime, DaysLeft) {
    constexpr std::int64_t kDay = 86400;
    const std::vector<std::pair<seconds, std::int64_t>> spans = {
        {seconds(3650 * kDay + 5), 3650},
        {seconds(kDay), 1},
        {seconds(kDay - 1), 0},
        {seconds(0), 0},
        {seconds(-1), -1},
        {seconds(-kDay), -1},
        {seconds(-12 * kDay - 1), -13},
    };
    for (const auto& [left, daysLeft] : spans) {
        EXPECT_EQ(DaysLeft(kMarch + left, kMarch), daysLeft) << left.count();
    }
}

TEST(UtcTime, TheLastSecondIsNotPast) {
    EXPECT_FALSE(IsPast(kMarch, kMarch));
    EXPECT_TRUE(IsPast(kMarch, kMarch + seconds(1)));
}

}  // namespace
}  // namespace sealkeeper
