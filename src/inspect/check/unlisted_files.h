// Finds files of a game that no catalogue lists.
#ifndef SEALKEEPER_INSPECT_CHECK_UNLISTED_FILES_H
#define SEALKEEPER_INSPECT_CHECK_UNLISTED_FILES_H

#include <vector>

#include "inspect/check/check_report.h"
#include "inspect/check/listed_paths.h"

namespace sealkeeper {

// Every file, link and special file below the current directory that is not in `listed`, hidden
// ones included, and the directories that cannot be read. Links are not followed.
[[nodiscard]] std::vector<Addition> FindUnlistedFiles(const ListedPaths& listed);

}  // namespace sealkeeper

#endif
