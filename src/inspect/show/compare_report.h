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

// Writes why they cannot be compared, and the exit status.
void WriteCompareFailureJson(const ComparedPaths& paths, const std::string& failure, int status,
                             Console& console);

}  // namespace sealkeeper

#endif
