// Sample reports of checks.
#ifndef SEALKEEPER_TESTS_INSPECT_CHECK_CHECK_REPORT_SUPPORT_H
#define SEALKEEPER_TESTS_INSPECT_CHECK_CHECK_REPORT_SUPPORT_H

#include <string>

#include "inspect/check/check_report.h"

namespace sealkeeper::test {

// For a game of two files, one of which has the wrong size, and a runtime.conf.
[[nodiscard]] inline CheckReport SmallReport() {
    CheckReport report;
    report.gameDirectory = "/game/";
    report.productId = "TestProduct42";
    report.catalogues = {{"base.bin", ResultCode::Ok, 2}};
    report.files = {{"a", 0, 1, ResultCode::Ok, false},
                    {"data/b", 0, 20, ResultCode::FileVerificationSizeMismatch, false}};
    report.runtimeConfiguration = RuntimeConfigurationVerdict::Good;
    report.code = ResultCode::FileVerificationSizeMismatch;
    return report;
}

// For the same game with both files unchanged, and a file that no catalogue lists.
[[nodiscard]] inline CheckReport ReportWithAddition() {
    CheckReport report = SmallReport();
    report.files[1].code = ResultCode::Ok;
    report.code = ResultCode::Ok;
    report.additions = {{AdditionKind::UnlistedFile, "x", "", 0, ""}};
    return report;
}

// For a game whose second catalogue is damaged.
[[nodiscard]] inline CheckReport EndedReport() {
    CheckReport report;
    report.gameDirectory = "/game/";
    report.productId = "TestProduct42";
    report.catalogues = {{"base.bin", ResultCode::Ok, 2}, {"mod.bin", ResultCode::FileInvalid, 0}};
    report.code = ResultCode::FileInvalid;
    report.failure = "'mod.bin': damaged";
    return report;
}

}  // namespace sealkeeper::test

#endif
