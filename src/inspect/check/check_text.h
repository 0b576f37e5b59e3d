// The report of a check for people.
#ifndef SEALKEEPER_INSPECT_CHECK_CHECK_TEXT_H
#define SEALKEEPER_INSPECT_CHECK_CHECK_TEXT_H

#include <string>

#include "inspect/check/check_report.h"
#include "inspect/report/console.h"

namespace sealkeeper {

struct CheckTextOptions {
    bool isStrict = false;
    // Also lists good files, and does not shorten the list of additions.
    bool isVerbose = false;
};

// Coloured and escaped for `console`.
[[nodiscard]] std::string CheckText(const CheckReport& report, const CheckTextOptions& options,
                                    const Console& console);

}  // namespace sealkeeper

#endif
