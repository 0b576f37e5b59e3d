#include "inspect/rules/game_inventory.h"

#include "inspect/tree/directory_walk.h"
#include "platform/file_system.h"

namespace sealkeeper {
namespace {

ResultCode AddItem(const FileTree& tree, const WalkedItem& item,
                   std::vector<InventoryItem>& items) {
    const std::string& path = item.path;
    FileStatus status;
    if (item.type == EntryType::Other) {
        items.push_back({path, ItemKind::SpecialFile});
        return ResultCode::Ok;
    }
    const ResultCode code = tree.LookAtPath(path, status);
    if (item.type == EntryType::Link) {
        // A link into a dead mount counts as dangling, as it does for the walk.
        const bool isDangling = code != ResultCode::Ok || status.type == FileType::Missing;
        items.push_back({path, isDangling ? ItemKind::DanglingLink : ItemKind::Link});
        return ResultCode::Ok;
    }
    items.push_back({path, ItemKind::RegularFile, static_cast<std::uint64_t>(status.sizeBytes)});
    return code;
}

}  // namespace

ResultCode TakeInventory(const FileTree& tree, std::vector<InventoryItem>& items) {
    items.clear();
    DirectoryWalk walk(tree);
    WalkedDirectory directory;
    while (walk.HasNext()) {
        if (const ResultCode code = walk.Next(directory); code != ResultCode::Ok) {
            return code;
        }
        if (!directory.items) {
            items.push_back({directory.path, ItemKind::UnlistableDirectory});
            continue;
        }
        if (directory.items->empty() && !directory.path.empty()) {
            items.push_back({directory.path, ItemKind::DirectoryWithoutFiles});
        }
        for (const WalkedItem& item : *directory.items) {
            if (const ResultCode code = AddItem(tree, item, items); code != ResultCode::Ok) {
                return code;
            }
        }
    }
    return ResultCode::Ok;
}

}  // namespace sealkeeper
