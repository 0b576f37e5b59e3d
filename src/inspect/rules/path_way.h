// Checks the directories on a path through the game. The current directory is the game directory.
#ifndef SEALKEEPER_INSPECT_RULES_PATH_WAY_H
#define SEALKEEPER_INSPECT_RULES_PATH_WAY_H

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "app/result_code.h"

namespace sealkeeper {

// Sets `resolved` to where `path` lies; empty where it leads nowhere or this user may not see
// where. Fails as `JudgeLookError` does.
ResultCode ResolveInGame(const std::string& path, std::string& resolved);

// Sets `closed` to the first directory on the way of `pattern` that this user may not read, where a
// wildcard needs it, or may not enter; empty if there is none. Directories after the first wildcard
// are not checked, since that may match several. Fails as `JudgeLookError` does.
ResultCode FindClosedDirectory(std::string_view pattern, std::optional<std::string>& closed);

// Finds the links by which paths leave the game directory.
class OutwardLinks {
  public:
    // Sets `link` to the one by which `path`, an existing lexical path, leaves the game directory;
    // empty if it does not. Resolves each path once, since patterns overlap. Fails as
    // `JudgeLookError` does; `link` is then as before.
    ResultCode Find(const std::string& path, std::optional<std::string>& link);

  private:
    // Without links; empty until it is asked for.
    std::string game_;
    std::unordered_map<std::string, std::optional<std::string>> known_;
};

}  // namespace sealkeeper

#endif
