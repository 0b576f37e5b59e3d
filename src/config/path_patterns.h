// Expands the path patterns of the configuration file against the current directory.
#ifndef SEALKEEPER_CONFIG_PATH_PATTERNS_H
#define SEALKEEPER_CONFIG_PATH_PATTERNS_H

#include <string>
#include <unordered_set>
#include <vector>

#include "app/result_code.h"
#include "platform/file_tree.h"

namespace sealkeeper {

using PathSet = std::unordered_set<std::string>;

// Expands each pattern, with "./" in front, in `tree` and adds the paths that it matches to
// `paths`. Sets `hasMatched` to whether any pattern matched. Logs one message for each pattern.
// Fails with `SealkeeperIOError`, logged, when the system fails to look; then nothing is added.
ResultCode GlobPaths(const std::vector<std::string>& patterns, PathSet& paths, bool& hasMatched,
                     const FileTree& tree = SystemFileTree());

}  // namespace sealkeeper

#endif
