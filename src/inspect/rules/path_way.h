// Checks the directories on a path through the game. The current directory is the game directory.
#ifndef SEALKEEPER_INSPECT_RULES_PATH_WAY_H
#define SEALKEEPER_INSPECT_RULES_PATH_WAY_H

#include <optional>
#include <string>
#include <string_view>

namespace sealkeeper {

// The first directory on the way of `pattern` that this user may not read, where a wildcard needs
// it, or may not enter. Empty if there is none. Directories after the first wildcard are not
// checked, since that may match several.
[[nodiscard]] std::optional<std::string> ClosedDirectoryIn(std::string_view pattern);

// The link by which `path`, an existing lexical path, leaves the game directory; empty if it does
// not.
[[nodiscard]] std::optional<std::string> LinkOutOfGame(std::string_view path);

}  // namespace sealkeeper

#endif
