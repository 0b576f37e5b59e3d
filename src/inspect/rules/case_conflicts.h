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
    // Of a directory: whether any file in it is sealed.
    bool isSealed = false;
};

struct CaseConflict {
    // At least two lexical paths that differ only in the letter case of their last component. All
    // of them are directories, or not all.
    std::map<std::string, NameFacts> names;
    // How many names clash below the directories once these are merged.
    std::size_t clashesBelow = 0;
};

// The conflicts of which at least one sealed file is a part. Directories alone merge, and are in
// conflict only if names below them clash; those are counted and are no conflicts of their own.
// `directoriesWithoutFiles` has lexical paths.
[[nodiscard]] std::vector<CaseConflict> FindCaseConflicts(
    const std::vector<JudgedFile>& files, const std::vector<std::string>& directoriesWithoutFiles);

}  // namespace sealkeeper

#endif
