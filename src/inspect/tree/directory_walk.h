// Everything in a directory and in those below it.
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

// What one directory holds but for the directories in it, which are still to be walked.
struct WalkedDirectory {
    // Lexical: empty for the one that the walk began in.
    std::string path;
    // Nothing where the directory cannot be listed.
    std::optional<std::vector<WalkedItem>> items;
};

// Walks the current directory, hidden names too, and follows no links. Not by recursion: a tree may
// be deeper than the stack.
class DirectoryWalk {
  public:
    explicit DirectoryWalk(const FileTree& tree);

    [[nodiscard]] bool HasNext() const { return !waiting_.empty(); }

    // Sets `directory` to the next one. Fails as `FileTree::ReadDirectory`, with its path set; the
    // walk may go on then.
    ResultCode Next(WalkedDirectory& directory);

  private:
    const FileTree& tree_;
    std::vector<std::string> waiting_ = {""};
};

}  // namespace sealkeeper

#endif
