// Walks a directory tree.
#ifndef SEALKEEPER_INSPECT_TREE_DIRECTORY_WALK_H
#define SEALKEEPER_INSPECT_TREE_DIRECTORY_WALK_H

#include <optional>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "platform/file_tree.h"

namespace sealkeeper {

struct WalkedItem {
    // Lexical; see lexical_path.h.
    std::string path;
    EntryType type;
};

// The contents of one directory except its subdirectories, which are walked later.
struct WalkedDirectory {
    // Lexical; empty for the directory where the walk began.
    std::string path;
    // Empty if the directory cannot be listed.
    std::optional<std::vector<WalkedItem>> items;
};

// Walks the current directory, hidden names included, without following links. Iterative, since a
// tree may be deeper than the stack.
class DirectoryWalk {
  public:
    explicit DirectoryWalk(const FileTree& tree);

    [[nodiscard]] bool HasNext() const { return !waiting_.empty(); }

    // Sets `directory` to the next one. If `FileTree::ReadDirectory` fails, returns its code with
    // the path set; the walk may go on.
    ResultCode Next(WalkedDirectory& directory);

  private:
    const FileTree& tree_;
    std::vector<std::string> waiting_ = {""};
};

}  // namespace sealkeeper

#endif
