// Expands the path patterns of the configuration file against the current directory.
#ifndef SEALKEEPER_CONFIG_PATH_PATTERNS_H
#define SEALKEEPER_CONFIG_PATH_PATTERNS_H

#include <string>
#include <unordered_set>
#include <vector>

namespace sealkeeper {

using PathSet = std::unordered_set<std::string>;

// Expands each pattern, with "./" in front, and adds the paths it matches to `paths`. Every pattern
// is reported by a message of its own and none ends the loop. Returns true when at least one path
// matched.
[[nodiscard]] bool GlobPaths(const std::vector<std::string>& patterns, PathSet& paths);

}  // namespace sealkeeper

#endif
