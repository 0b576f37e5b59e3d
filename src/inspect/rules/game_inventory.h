// Lists everything in a game directory, whatever the rules say.
#ifndef SEALKEEPER_INSPECT_RULES_GAME_INVENTORY_H
#define SEALKEEPER_INSPECT_RULES_GAME_INVENTORY_H

#include <cstdint>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "platform/file_tree.h"

namespace sealkeeper {

enum class ItemKind {
    RegularFile,
    Link,
    // A link whose target does not exist.
    DanglingLink,
    // A device, a FIFO or a socket.
    SpecialFile,
    UnlistableDirectory,
    // A directory that holds at most other directories.
    DirectoryWithoutFiles,
};

struct InventoryItem {
    // Lexical; see lexical_path.h.
    std::string path;
    ItemKind kind;
    // 0 for anything but regular files.
    std::uint64_t sizeBytes = 0;
};

// Sets `items` to everything below the current directory in `tree`, hidden files included. A
// readable directory that holds files is no item itself. Links are not followed. Fails with
// `SealkeeperIOError`, logged, if the system fails to read a directory or to examine a file.
ResultCode TakeInventory(const FileTree& tree, std::vector<InventoryItem>& items);

}  // namespace sealkeeper

#endif
