// What `compare` prints.
#ifndef SEALKEEPER_INSPECT_SHOW_COMPARE_REPORT_H
#define SEALKEEPER_INSPECT_SHOW_COMPARE_REPORT_H

#include <string>

#include "inspect/report/console.h"
#include "inspect/show/catalogue_difference.h"

namespace sealkeeper {

struct ComparedPaths {
    std::string before;
    std::string after;
};

void WriteCompareText(const ComparedPaths& paths, const CatalogueDifference& difference,
                      Console& console);

void WriteCompareJson(const ComparedPaths& paths, const CatalogueDifference& difference,
                      Console& console);

}  // namespace sealkeeper

#endif
