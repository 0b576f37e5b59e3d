// Names that file systems take for the same where they ignore letter case.
#ifndef SEALKEEPER_INSPECT_RULES_CASE_FOLDING_H
#define SEALKEEPER_INSPECT_RULES_CASE_FOLDING_H

#include <string>

namespace sealkeeper {

// The same text for all texts that differ in letter case alone, by Unicode's simple case folding:
// one character stands for one. Only ASCII letters count in a text that is no UTF-8, and where the
// system has no locale that knows others.
[[nodiscard]] std::string CaseFolded(const std::string& text);

}  // namespace sealkeeper

#endif
