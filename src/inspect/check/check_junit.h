// The report of a check as JUnit XML; docs/inspect/check.md has its suites.
#ifndef SEALKEEPER_INSPECT_CHECK_CHECK_JUNIT_H
#define SEALKEEPER_INSPECT_CHECK_CHECK_JUNIT_H

#include <string>
#include <vector>

#include "inspect/check/check_report.h"
#include "inspect/report/junit.h"

namespace sealkeeper {

// Additions fail where they count, by `isStrict`; else they are skipped.
[[nodiscard]] std::vector<JunitSuite> CheckJunitSuites(const CheckReport& report, bool isStrict);

[[nodiscard]] std::string CheckJunit(const CheckReport& report, bool isStrict);

}  // namespace sealkeeper

#endif
