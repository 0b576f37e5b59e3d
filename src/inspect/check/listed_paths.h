// The paths that the catalogues of a game list, as they are on disk.
#ifndef SEALKEEPER_INSPECT_CHECK_LISTED_PATHS_H
#define SEALKEEPER_INSPECT_CHECK_LISTED_PATHS_H

#include <string>
#include <unordered_set>

namespace sealkeeper {

// Compares by the letter, and so that "a//b" and "./a/b" are "a/b".
class ListedPaths {
  public:
    // `gameDirectory` is absolute, ends in '/' and is the current one.
    explicit ListedPaths(std::string gameDirectory);

    // Adds a path as verifying takes it: from the game directory or absolute. Where a ".." is in
    // it, the system decides what the directories before it are.
    void Add(const std::string& path);

    // `path` is from the game directory, without dot components and double slashes.
    [[nodiscard]] bool Has(const std::string& path) const { return paths_.contains(path); }

  private:
    std::string gameDirectory_;
    std::unordered_set<std::string> paths_;
};

}  // namespace sealkeeper

#endif
