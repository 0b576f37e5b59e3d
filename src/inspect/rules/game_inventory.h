// Everything that a game directory holds, whatever the rules say.
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
    // A link whose end is not there.
    DanglingLink,
    // A device, a FIFO or a socket.
    SpecialFile,
    UnlistableDirectory,
};

struct InventoryItem {
    // Lexical; see lexical_path.h.
    std::string path;
    ItemKind kind;
    // 0 for all but regular files.
    std::uint64_t sizeBytes = 0;
};

// Sets `items` to all that lies below the current directory in `tree`, hidden files too. A
// directory that can be read is walked and is no item itself. What a link leads to is not looked
// for. Fails with `SealkeeperIOError`, logged,
// when the system fails to read a directory or to look at a file.
ResultCode TakeInventory(const FileTree& tree, std::vector<InventoryItem>& items);

}  // namespace sealkeeper

#endif
