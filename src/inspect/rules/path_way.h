// What a path through the game meets on its way. The current directory is the game directory.
#ifndef SEALKEEPER_INSPECT_RULES_PATH_WAY_H
#define SEALKEEPER_INSPECT_RULES_PATH_WAY_H

#include <optional>
#include <string>
#include <string_view>

namespace sealkeeper {

// The first directory that keeps this user from finding what `pattern` is meant for: one that must
// be read for its wildcards, or gone through, and may not be. Nothing without one, and where one
// comes after the first wildcard, since that leads to several directories.
[[nodiscard]] std::optional<std::string> ClosedDirectoryIn(std::string_view pattern);

// The link by which `path`, a lexical one that is there, leads out of the game directory; nothing
// where none does.
[[nodiscard]] std::optional<std::string> LinkOutOfGame(std::string_view path);

}  // namespace sealkeeper

#endif
