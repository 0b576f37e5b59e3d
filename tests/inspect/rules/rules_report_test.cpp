#include "inspect/rules/rules_report.h"

#include <gtest/gtest.h>

#include "inspect/report/command_status.h"

namespace sealkeeper {
namespace {

TEST(RulesReport, AddsUpFilesAndBytesByStateAndReason) {
    RulesReport report;
    report.files = {{"a", 1, std::nullopt},
                    {"b", 2, LeftOutReason::Hidden},
                    {"c", 4, LeftOutReason::Hidden},
                    {"d", 8, LeftOutReason::TooLarge}};
    const RulesTotals totals = TotalsOf(report);
    EXPECT_EQ(totals.sealed.files, 1U);
    EXPECT_EQ(totals.sealed.bytes, 1U);
    EXPECT_EQ(totals.leftOut.files, 3U);
    EXPECT_EQ(totals.leftOut.bytes, 14U);
    ASSERT_EQ(totals.leftOutBy.size(), 2U);
    EXPECT_EQ(totals.leftOutBy.at(LeftOutReason::Hidden).bytes, 6U);
    EXPECT_EQ(totals.leftOutBy.at(LeftOutReason::TooLarge).files, 1U);
}

TEST(RulesReport, SaysWhyGenerateFails) {
    EXPECT_EQ(RefusalText({ResultCode::InitFailedConfig, "Because."}),
              "generate fails with 4 (InitFailedConfig): Because.");
}

TEST(RulesReport, HasAnExitStatus) {
    RulesReport report;
    EXPECT_EQ(StatusOf(report), kStatusGood);
    report.warnings.push_back({1, 1, "There.", "Mend it."});
    EXPECT_EQ(StatusOf(report), kStatusWarning);
    report.refusal = Refusal{ResultCode::InitFailedConfig, "Because."};
    EXPECT_EQ(StatusOf(report), kStatusError);
}

}  // namespace
}  // namespace sealkeeper
