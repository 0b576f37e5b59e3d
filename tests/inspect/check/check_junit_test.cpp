#include "inspect/check/check_junit.h"

#include <gtest/gtest.h>

#include "inspect/check/check_report_support.h"

namespace sealkeeper {
namespace {

using Outcome = JunitCase::Outcome;

// One line per case.
std::string LinesOf(const CheckReport& report, bool isStrict = false) {
    const auto nameOf = [](Outcome outcome) {
        switch (outcome) {
            case Outcome::Passed:
                return "passed";
            case Outcome::Failure:
                return "failure";
            case Outcome::Error:
                return "error";
            case Outcome::Skipped:
                return "skipped";
        }
        return "";
    };
    std::string lines;
    for (const JunitSuite& suite : CheckJunitSuites(report, isStrict)) {
        lines += suite.name + ":\n";
        for (const JunitCase& test : suite.cases) {
            lines += "  " + test.className + "|" + test.name + "|" + nameOf(test.outcome) + "|" +
                     test.type + "|" + test.message + "\n";
        }
    }
    return lines;
}

TEST(CheckJunit, HasACaseForEachFile) {
    EXPECT_EQ(LinesOf(test::SmallReport()),
              "verification:\n"
              "  verification|base.bin|passed||\n"
              "  verification|runtime.conf|passed||\n"
              "base.bin:\n"
              "  base.bin|a|passed||\n"
              "  base.bin|data/b|failure|24|24 (FileVerificationSizeMismatch)\n"
              "additions:\n");
}

TEST(CheckJunit, AdditionsFailWhereTheyCount) {
    const std::string lenient = LinesOf(test::ReportWithAddition(), false);
    EXPECT_NE(lenient.find("additions:\n  additions|x|skipped||unlisted file (fails with --strict "
                           "alone)\n"),
              std::string::npos)
        << lenient;
    const std::string strict = LinesOf(test::ReportWithAddition(), true);
    EXPECT_NE(strict.find("additions:\n  additions|x|failure|40|unlisted file\n"),
              std::string::npos)
        << strict;
}

TEST(CheckJunit, CatalogueThatEndedTheVerification) {
    EXPECT_EQ(LinesOf(test::EndedReport()),
              "verification:\n"
              "  verification|base.bin|passed||\n"
              "  verification|mod.bin|error|9|'mod.bin': damaged\n"
              "  verification|runtime.conf|skipped||the verification ended before\n"
              "base.bin:\n"
              "mod.bin:\n"
              "additions:\n");
}

TEST(CheckJunit, OtherEndOfTheVerification) {
    CheckReport report;
    report.code = ResultCode::SealkeeperIOError;
    report.failure = "no catalogues";
    EXPECT_EQ(LinesOf(report),
              "verification:\n"
              "  verification|runtime.conf|skipped||the verification ended before\n"
              "  verification|verification|error|3|no catalogues\n"
              "additions:\n");
}

TEST(CheckJunit, RuntimeConfiguration) {
    CheckReport report = test::SmallReport();
    report.runtimeConfiguration = RuntimeConfigurationVerdict::NotRead;
    EXPECT_NE(LinesOf(report).find("|runtime.conf|skipped||there is none that can be read\n"),
              std::string::npos);
    report.runtimeConfiguration = RuntimeConfigurationVerdict::NotValid;
    report.runtimeConfigurationFailure = "not valid";
    EXPECT_NE(LinesOf(report).find("|runtime.conf|failure|22|not valid\n"), std::string::npos);
}

}  // namespace
}  // namespace sealkeeper
