// Names that file systems take for the same where they ignore letter case.
#ifndef SEALKEEPER_INSPECT_RULES_CASE_FOLDING_H
#define SEALKEEPER_INSPECT_RULES_CASE_FOLDING_H

#include <string>

namespace sealkeeper {

// The same text for all texts that differ in letter case alone, by Unicode's simple case folding:
// one character stands for one. Only ASCII letters count in a text that is not UTF-8, and where
// `KnowsLettersOfUnicode` says no.
[[nodiscard]] std::string CaseFolded(const std::string& text);

// Whether the letters beyond ASCII are known. They are those of the locale C.UTF-8 or en_US.UTF-8,
// whose files are read at the first call of either function. Where none is installed or the system
// fails to read it, the answer is no, for the whole run of the process.
[[nodiscard]] bool KnowsLettersOfUnicode();

}  // namespace sealkeeper

#endif
