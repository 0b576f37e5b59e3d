// What stands in the way of a path through the game. The current directory is the game directory.
#ifndef SEALKEEPER_INSPECT_RULES_PATH_WAY_H
#define SEALKEEPER_INSPECT_RULES_PATH_WAY_H

#include <optional>
#include <string>
#include <string_view>

namespace sealkeeper {

// The first directory that keeps this user from finding what `pattern` is meant for: one that must
// be read for its wildcards, or gone through, and may not be. Nothing without one, and where it
// lies behind a wildcard.
[[nodiscard]] std::optional<std::string> ClosedDirectoryIn(std::string_view pattern);

// The link by which `path`, a lexical one that is there, leads out of the game directory; nothing
// where none does.
[[nodiscard]] std::optional<std::string> LinkOutOfGame(std::string_view path);

}  // namespace sealkeeper

#endif
