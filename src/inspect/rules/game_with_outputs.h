// The game as generate finds it: with what the run itself has written by then.
#ifndef SEALKEEPER_INSPECT_RULES_GAME_WITH_OUTPUTS_H
#define SEALKEEPER_INSPECT_RULES_GAME_WITH_OUTPUTS_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "app/result_code.h"
#include "platform/directory_listing.h"
#include "platform/file_system.h"
#include "platform/file_tree.h"

namespace sealkeeper {

// The files below the current directory, which is the game directory, and some that are not there.
class GameWithOutputs : public FileTree {
  public:
    // `gameDirectory` is its absolute path without links.
    explicit GameWithOutputs(std::string gameDirectory);

    // Adds a directory or a file by its lexical path, whose parent is there or was added before.
    // What is there stays what it is.
    void AddDirectory(const std::string& path);
    void AddFile(const std::string& path, std::uint64_t sizeBytes);

    // Where the lexical path `path` leads by links: from the game directory, or absolute where that
    // is elsewhere. Itself where it leads nowhere.
    [[nodiscard]] std::string LocationOf(const std::string& path) const;

    ResultCode ReadDirectory(const std::string& directory,
                             std::optional<DirectoryEntries>& entries) const override;
    ResultCode LookAtPath(const std::string& path, FileStatus& status) const override;
    ResultCode LookForName(const std::string& path, bool& isThere) const override;

  private:
    // Paths without links, absolute and without a slash at their end, as `ResolvePath` gives them.
    using Key = std::string;

    [[nodiscard]] std::optional<Key> KeyOf(const std::string& path) const;
    [[nodiscard]] std::optional<Key> Step(const Key& directory, std::string_view name) const;
    [[nodiscard]] bool IsDirectory(const Key& key) const;
    void Add(const std::string& path, const FileStatus& status);
    [[nodiscard]] std::optional<Key> ParentAt(const std::string& directory) const;
    void AddEntriesOf(const Key& directory, DirectoryEntries& entries) const;

    Key root_;
    std::map<Key, FileStatus> added_;
};

}  // namespace sealkeeper

#endif
