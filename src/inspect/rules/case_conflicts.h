// Finds names that are one where file systems ignore letter case.
#ifndef SEALKEEPER_INSPECT_RULES_CASE_CONFLICTS_H
#define SEALKEEPER_INSPECT_RULES_CASE_CONFLICTS_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

struct NameFacts {
    bool isDirectory = false;
    // Of a directory: whether anything in it is sealed.
    bool isSealed = false;
};

struct CaseConflict {
    // At least two lexical paths that differ only in the letter case of their last component. All
    // of them are directories, or not all.
    std::map<std::string, NameFacts> names;
    // How many names occur in several of the directories, but for their letter case, and cannot
    // exist twice: of two directories, what they hold can be in one.
    std::size_t namesInCommon = 0;
};

// The conflicts of which at least one sealed file is a part. Directories are in conflict only by
// names in common, which are then counted and are no conflicts of their own.
[[nodiscard]] std::vector<CaseConflict> FindCaseConflicts(const std::vector<JudgedFile>& files);

}  // namespace sealkeeper

#endif
