// The game as generate sees it, including what the run itself has written by then.
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

// The file system below the current directory, the game directory, with some files added that do
// not exist.
class GameWithOutputs : public FileTree {
  public:
    // `gameDirectory` is the absolute path without links.
    explicit GameWithOutputs(std::string gameDirectory);

    // Adds a directory or file by its lexical path. The parent must exist or have been added
    // before. Existing files stay as they are.
    void AddDirectory(const std::string& path);
    void AddFile(const std::string& path, std::uint64_t sizeBytes);

    // The absolute path without links and dot components of `path`, which need not be lexical. The
    // last component need not exist. Empty if nothing can be there.
    [[nodiscard]] std::optional<std::string> Resolve(const std::string& path) const;

    // Resolves the links in a lexical path. The result is relative to the game directory, or
    // absolute if it is elsewhere. Returns `path` itself if it cannot be resolved.
    [[nodiscard]] std::string LocationOf(const std::string& path) const;

    ResultCode ReadDirectory(const std::string& directory,
                             std::optional<DirectoryEntries>& entries) const override;
    ResultCode LookAtPath(const std::string& path, FileStatus& status) const override;
    ResultCode LookForName(const std::string& path, bool& isThere) const override;

  private:
    // Absolute paths without links and without a trailing slash, as `ResolvePath` returns them.
    using Key = std::string;

    [[nodiscard]] std::optional<Key> KeyOf(const std::string& path) const;
    [[nodiscard]] std::optional<Key> KeyOf(const std::string& path, int& linksLeft) const;
    [[nodiscard]] std::optional<Key> Step(const Key& directory, std::string_view name,
                                          int& linksLeft) const;
    [[nodiscard]] std::optional<Key> TargetOf(const Key& link, int& linksLeft) const;
    [[nodiscard]] bool IsDirectory(const Key& key) const;
    [[nodiscard]] bool MayBeSearched(const Key& directory) const;
    void Add(const std::string& path, const FileStatus& status);
    [[nodiscard]] std::optional<Key> ParentAt(const std::string& directory) const;
    void AddEntriesOf(const Key& directory, DirectoryEntries& entries) const;

    Key root_;
    std::map<Key, FileStatus> added_;
};

}  // namespace sealkeeper

#endif
