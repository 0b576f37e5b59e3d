// The report of the rules for people.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_TEXT_H
#define SEALKEEPER_INSPECT_RULES_RULES_TEXT_H

#include <string>

#include "inspect/report/console.h"
#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// Which files the report names.
enum class RulesListing {
    // Those that are left out, by reason, the first dozen of each.
    LeftOut,
    // All, sealed ones too, in the order of the report.
    EveryFile,
};

// Why generate would fail if it would, the warnings with their cures, then the totals, then the
// files of `listing`, in lines. Meant for standard output, as `console` knows it.
[[nodiscard]] std::string RulesText(const RulesReport& report, const Console& console,
                                    RulesListing listing);

}  // namespace sealkeeper

#endif
