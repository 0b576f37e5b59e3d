// The game as generate finds it: with what the run itself has written by then.
#ifndef SEALKEEPER_INSPECT_RULES_GAME_WITH_OUTPUTS_H
#define SEALKEEPER_INSPECT_RULES_GAME_WITH_OUTPUTS_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>

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
    [[nodiscard]] std::optional<std::string> KeyOf(const std::string& path) const;
    void Add(const std::string& path, const FileStatus& status);
    [[nodiscard]] std::string AbsolutePathOf(const std::string& key) const;
    [[nodiscard]] bool HasKey(const std::string& key) const;
    [[nodiscard]] std::optional<std::string> ParentAt(const std::string& directory) const;
    void AddEntriesOf(const std::string& directory, DirectoryEntries& entries) const;

    // The game directory, without links.
    std::string root_;
    // By their paths from there, without links, too.
    std::map<std::string, FileStatus> added_;
};

}  // namespace sealkeeper

#endif
