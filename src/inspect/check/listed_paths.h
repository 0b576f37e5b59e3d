// The paths listed in the catalogues of a game, in the form they have on disk.
#ifndef SEALKEEPER_INSPECT_CHECK_LISTED_PATHS_H
#define SEALKEEPER_INSPECT_CHECK_LISTED_PATHS_H

#include <string>
#include <unordered_set>

namespace sealkeeper {

// Compares byte for byte after normalisation: "a//b" equals "a/b", "./a/b" too.
class ListedPaths {
  public:
    // `gameDirectory` is absolute, ends in '/' and is the current directory.
    explicit ListedPaths(std::string gameDirectory);

    // Adds a path as verify takes it: relative to the game directory, or absolute. The system
    // resolves the directories of an absolute path or one with "..".
    void Add(const std::string& path);

    // `path` is relative to the game directory, without dot components and double slashes.
    [[nodiscard]] bool Has(const std::string& path) const { return paths_.contains(path); }

  private:
    std::string gameDirectory_;
    std::unordered_set<std::string> paths_;
};

}  // namespace sealkeeper

#endif
