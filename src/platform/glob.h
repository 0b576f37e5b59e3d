// Expands path patterns as POSIX `glob` does, except that it reports a directory that the system
// fails to read. Implementations of `glob` take such a directory for an empty one.
#ifndef SEALKEEPER_PLATFORM_GLOB_H
#define SEALKEEPER_PLATFORM_GLOB_H

#include <string>
#include <vector>

#include "app/result_code.h"
#include "platform/file_tree.h"

namespace sealkeeper {

// Whether `text` contains a character that begins a pattern: '*', '?' or '['.
[[nodiscard]] bool HasPattern(const std::string& text);

// Sets `paths` to the paths of `tree` that match `pattern`, which must have no backslash, in the
// order in which their directories return them. Each component with a pattern is matched by POSIX
// `fnmatch`, so only a period matches a period at the start of a name. A directory that is missing,
// or that this user may not read, matches nothing. Fails with `SealkeeperIOError`, logged, when the
// system fails to read a directory on the way.
//
// A path has the slashes of the pattern, but none at its end, and at most two in a row after the
// first component with a pattern. If the pattern ends in a slash after a component with a pattern,
// only directories and links to them match.
ResultCode ExpandGlobPattern(const std::string& pattern, std::vector<std::string>& paths,
                             const FileTree& tree = SystemFileTree());

}  // namespace sealkeeper

#endif
