#include "inspect/check/check_text.h"

#include <gtest/gtest.h>

#include "inspect/check/check_report_support.h"
#include "support/captured_output.h"

namespace sealkeeper {
namespace {

// Not for a terminal, so without colour.
std::string TextOf(const CheckReport& report, const CheckTextOptions& options = {}) {
    const test::CapturedOutput output;
    const Console console;
    return CheckText(report, options, console);
}

TEST(CheckText, ShowsFailuresAlone) {
    EXPECT_EQ(TextOf(test::SmallReport()),
              "base.bin: 2 files\n"
              "runtime.conf: good\n"
              "\n"
              "24 (FileVerificationSizeMismatch)  data/b\n"
              "\n"
              "2 files: 1 with 0 (Ok), 1 with 24 (FileVerificationSizeMismatch)\n"
              "Status 24 (FileVerificationSizeMismatch)\n");
}

TEST(CheckText, VerboseShowsGoodFilesToo) {
    EXPECT_EQ(TextOf(test::SmallReport(), {false, true}),
              "base.bin: 2 files\n"
              "runtime.conf: good\n"
              "\n"
              "0 (Ok)                             a\n"
              "24 (FileVerificationSizeMismatch)  data/b\n"
              "\n"
              "2 files: 1 with 0 (Ok), 1 with 24 (FileVerificationSizeMismatch)\n"
              "Status 24 (FileVerificationSizeMismatch)\n");
}

TEST(CheckText, NamesTheCatalogueWhereThereAreSeveral) {
    CheckReport report = test::SmallReport();
    report.catalogues.push_back({"mod.bin", ResultCode::Ok, 0});
    const std::string text = TextOf(report);
    EXPECT_NE(text.find("  data/b  [base.bin]\n"), std::string::npos) << text;
}

TEST(CheckText, TellsOfAliasedPaths) {
    CheckReport report = test::SmallReport();
    report.files[1].isAliased = true;
    const std::string text = TextOf(report);
    EXPECT_NE(text.find("\nThe paths of 1 file are stored as aliases are (alias_paths)"),
              std::string::npos)
        << text;
}

TEST(CheckText, ShowsAdditionsByKind) {
    CheckReport report = test::ReportWithAddition();
    report.additions = {
        {AdditionKind::UnlistedFile, "x", "", 0, ""},
        {AdditionKind::UnlistedFile, "y", "", 0, ""},
        {AdditionKind::UnlistedLink, "l", "/etc/passwd", 0, ""},
        {AdditionKind::UnlistedSpecialFile, "pipe", "", 0, ""},
        {AdditionKind::LinkWhereSealed, "data", "../elsewhere", 3, ""},
        {AdditionKind::LinkWhereSealed, "lib", "", 1, "its target cannot be read: why"},
        {AdditionKind::NotLookedAt, "secret", "", 0, "Permission denied"},
        {AdditionKind::MissingRuntimeConfiguration, "Quorvane/Certificates/runtime.conf", "", 0,
         ""},
    };
    EXPECT_EQ(TextOf(report),
              "base.bin: 2 files\n"
              "runtime.conf: good\n"
              "\n"
              "2 files that no catalogue lists:\n"
              "  x\n"
              "  y\n"
              "\n"
              "1 link that no catalogue lists:\n"
              "  l -> /etc/passwd\n"
              "\n"
              "1 special file that no catalogue lists:\n"
              "  pipe\n"
              "\n"
              "2 links where files were sealed, which verifying follows:\n"
              "  data -> ../elsewhere  (3 paths)\n"
              "  lib  (1 path): its target cannot be read: why\n"
              "\n"
              "1 place that could not be looked at:\n"
              "  secret: Permission denied\n"
              "\n"
              "runtime.conf is missing, though base.bin is there:\n"
              "  Quorvane/Certificates/runtime.conf\n"
              "\n"
              "2 files: 2 with 0 (Ok)\n"
              "Status 0 (Ok)\n");
}

CheckReport ReportWithUnlisted(int count) {
    CheckReport report = test::ReportWithAddition();
    report.additions.clear();
    for (int i = 0; i < count; ++i) {
        report.additions.push_back(
            {AdditionKind::UnlistedFile, "x" + std::to_string(100 + i), "", 0, ""});
    }
    return report;
}

TEST(CheckText, CutsAGroupAfterTwenty) {
    const std::string twenty = TextOf(ReportWithUnlisted(20));
    EXPECT_NE(twenty.find("  x119\n\n"), std::string::npos) << twenty;
    const std::string more = TextOf(ReportWithUnlisted(22));
    EXPECT_NE(more.find("22 files that no catalogue lists:\n"), std::string::npos) << more;
    EXPECT_NE(more.find("  x119\n  and 2 more\n\n"), std::string::npos) << more;
    const std::string all = TextOf(ReportWithUnlisted(22), {false, true});
    EXPECT_NE(all.find("  x121\n\n"), std::string::npos) << all;
}

TEST(CheckText, TellsOfAdditionsThatCount) {
    EXPECT_TRUE(TextOf(test::ReportWithAddition(), {true, false})
                    .ends_with("Status 40: additions, which --strict does not let pass\n"));
}

TEST(CheckText, TellsOfAVerificationThatEnded) {
    EXPECT_EQ(TextOf(test::EndedReport()),
              "base.bin: 2 files\n"
              "mod.bin: not read, 9 (FileInvalid)\n"
              "\n"
              "Ended before its end: status 9 (FileInvalid)\n");
}

TEST(CheckText, TellsOfARuntimeConfigurationThatIsNotGood) {
    CheckReport report = test::SmallReport();
    report.runtimeConfiguration = RuntimeConfigurationVerdict::NotValid;
    report.runtimeConfigurationFailure = "not valid";
    const std::string text = TextOf(report);
    EXPECT_NE(text.find("runtime.conf: 22 (MbedTlsX509VerifyFailed)  not valid\n"),
              std::string::npos)
        << text;
}

}  // namespace
}  // namespace sealkeeper
