#include "inspect/check/check_report.h"

#include <gtest/gtest.h>

#include "inspect/check/check_report_support.h"

namespace sealkeeper {
namespace {

TEST(CheckReport, StatusIsThatOfVerify) {
    EXPECT_EQ(StatusOf(test::SmallReport(), false), 24);
    EXPECT_EQ(StatusOf(test::SmallReport(), true), 24);
    EXPECT_EQ(StatusOf(test::EndedReport(), true), 9);
    EXPECT_EQ(StatusOf(CheckReport(), true), 0);
}

TEST(CheckReport, AdditionsCountWhereTheyAreAskedForAndNothingElseIsWrong) {
    CheckReport report = test::ReportWithAddition();
    EXPECT_EQ(StatusOf(report, false), 0);
    EXPECT_EQ(StatusOf(report, true), 40);
    report.code = ResultCode::MbedTlsX509VerifyFailed;
    EXPECT_EQ(StatusOf(report, true), 22);
}

TEST(CheckReport, CountsFilesByCode) {
    const std::map<ResultCode, std::uint64_t> expected = {
        {ResultCode::Ok, 1}, {ResultCode::FileVerificationSizeMismatch, 1}};
    EXPECT_EQ(CountsByCode(test::SmallReport()), expected);
    EXPECT_TRUE(CountsByCode(CheckReport()).empty());
}

}  // namespace
}  // namespace sealkeeper
