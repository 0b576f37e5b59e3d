// The report of the rules as an HTML page.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_PAGE_H
#define SEALKEEPER_INSPECT_RULES_RULES_PAGE_H

#include <string>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// A self-contained HTML document in UTF-8. Its Content-Security-Policy lets the browser run only
// the page's own script and style, whatever names are in `report`.
[[nodiscard]] std::string RulesPage(const RulesReport& report);

}  // namespace sealkeeper

#endif
