// The report of the rules as text.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_TEXT_H
#define SEALKEEPER_INSPECT_RULES_RULES_TEXT_H

#include <string>

#include "inspect/report/console.h"
#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// Which files the report names.
enum class RulesListing {
    // The files left out, grouped by reason, the first dozen of each.
    LeftOut,
    // All files, in the order of the report.
    EveryFile,
};

// The refusal if there is one, the warnings with their cures, the totals, and the files of
// `listing`. The text is for standard output, as `console` knows it.
[[nodiscard]] std::string RulesText(const RulesReport& report, const Console& console,
                                    RulesListing listing);

}  // namespace sealkeeper

#endif
