// The report of a check as JSON. docs/inspect/check.md lists the members.
#ifndef SEALKEEPER_INSPECT_CHECK_CHECK_JSON_H
#define SEALKEEPER_INSPECT_CHECK_CHECK_JSON_H

#include <string>

#include "inspect/check/check_report.h"

namespace sealkeeper {

[[nodiscard]] std::string CheckJson(const CheckReport& report, bool isStrict);

}  // namespace sealkeeper

#endif
