// The expansion of path patterns, as by POSIX `glob`, whose implementations take a directory that
// the system fails to read for an empty one.
#ifndef SEALKEEPER_PLATFORM_GLOB_H
#define SEALKEEPER_PLATFORM_GLOB_H

#include <string>
#include <vector>

#include "app/result_code.h"
#include "platform/file_tree.h"

namespace sealkeeper {

// Whether `text` holds a character that begins a pattern: '*', '?' or '['.
[[nodiscard]] bool HasPattern(const std::string& text);

// Sets `paths` to those of `tree` that `pattern`, which has no backslash, matches, in the order in
// which their directories return them. Each component with a pattern is matched by POSIX `fnmatch`,
// so a period at the beginning of a name is only matched by one. What is missing or must not be
// read matches nothing. Fails with `SealkeeperIOError`, logged, when the system fails to read a
// directory on the way.
//
// A path has the slashes of the pattern, at most two of them together once a component with a
// pattern is past, and none at its end. With one after a component with a pattern at the end, only
// directories match, and links to them.
ResultCode ExpandGlobPattern(const std::string& pattern, std::vector<std::string>& paths,
                             const FileTree& tree = SystemFileTree());

}  // namespace sealkeeper

#endif
