// The report of a check as JUnit XML. docs/inspect/check.md lists the suites.
#ifndef SEALKEEPER_INSPECT_CHECK_CHECK_JUNIT_H
#define SEALKEEPER_INSPECT_CHECK_CHECK_JUNIT_H

#include <string>
#include <vector>

#include "inspect/check/check_report.h"
#include "inspect/report/junit.h"

namespace sealkeeper {

// Additions are failures if `isStrict`, else skipped cases.
[[nodiscard]] std::vector<JunitSuite> CheckJunitSuites(const CheckReport& report, bool isStrict);

[[nodiscard]] std::string CheckJunit(const CheckReport& report, bool isStrict);

}  // namespace sealkeeper

#endif
