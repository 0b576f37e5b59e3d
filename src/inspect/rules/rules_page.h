// The report of the rules as a page for a browser.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_PAGE_H
#define SEALKEEPER_INSPECT_RULES_RULES_PAGE_H

#include <string>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// One HTML document in UTF-8 that needs nothing else and fetches nothing. Its policy lets the
// browser run the page's own script and style alone, whatever the names in `report` hold.
[[nodiscard]] std::string RulesPage(const RulesReport& report);

}  // namespace sealkeeper

#endif
