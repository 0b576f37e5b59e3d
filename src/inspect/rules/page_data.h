// The data for the page's script.
#ifndef SEALKEEPER_INSPECT_RULES_PAGE_DATA_H
#define SEALKEEPER_INSPECT_RULES_PAGE_DATA_H

#include <string>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// JSON that may stand in a script element: it has no "<". Its members:
//   states  the words for what became of a file: "sealed", then the reasons that occur
//   files   for each file [path, bytes, index in states]; where the path is not UTF-8, its bytes in
//           hexadecimal come fourth
[[nodiscard]] std::string PageData(const RulesReport& report);

}  // namespace sealkeeper

#endif
