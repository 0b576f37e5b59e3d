// Reports on invented games.
#ifndef SEALKEEPER_TESTS_INSPECT_RULES_SAMPLE_REPORT_H
#define SEALKEEPER_TESTS_INSPECT_RULES_SAMPLE_REPORT_H

#include <cstddef>

#include "inspect/rules/rules_report.h"

namespace sealkeeper::test {

// A game of `fileCount` files in folders, with every reason for being left out, a few warnings, and
// sizes from zero to gigabytes. Always the same.
[[nodiscard]] RulesReport SampleReport(std::size_t fileCount);

// Adds files, in "hostile/", and warnings whose texts try to act as markup.
void AddHostileTexts(RulesReport& report);

}  // namespace sealkeeper::test

#endif
