// Checks the directories on a path through the game. The current directory is the game directory.
#ifndef SEALKEEPER_INSPECT_RULES_PATH_WAY_H
#define SEALKEEPER_INSPECT_RULES_PATH_WAY_H

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace sealkeeper {

// The first directory on the way of `pattern` that this user may not read, where a wildcard needs
// it, or may not enter. Empty if there is none. Directories after the first wildcard are not
// checked, since that may match several.
[[nodiscard]] std::optional<std::string> ClosedDirectoryIn(std::string_view pattern);

// Finds the links by which paths leave the game directory.
class OutwardLinks {
  public:
    OutwardLinks();

    // The link by which `path`, an existing lexical path, leaves the game directory; empty if it
    // does not. Resolves each path once, since patterns overlap.
    [[nodiscard]] const std::optional<std::string>& LinkOf(const std::string& path);

  private:
    // Without links; empty if the system fails to tell.
    std::string game_;
    std::unordered_map<std::string, std::optional<std::string>> known_;
};

}  // namespace sealkeeper

#endif
