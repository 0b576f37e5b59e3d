// Reports of games that are not there.
#ifndef SEALKEEPER_TESTS_INSPECT_RULES_SAMPLE_REPORT_H
#define SEALKEEPER_TESTS_INSPECT_RULES_SAMPLE_REPORT_H

#include <cstddef>

#include "inspect/rules/rules_report.h"

namespace sealkeeper::test {

// A game of `fileCount` files in folders, with every reason to be left out, a few warnings, and
// sizes from nothing to gigabytes. The same each time.
[[nodiscard]] RulesReport SampleReport(std::size_t fileCount);

// Adds files and warnings whose texts try to be more than text, the files under "hostile/".
void AddHostileTexts(RulesReport& report);

}  // namespace sealkeeper::test

#endif
