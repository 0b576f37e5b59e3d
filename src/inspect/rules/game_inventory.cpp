#include "inspect/rules/game_inventory.h"

#include <optional>
#include <utility>

#include "platform/directory_listing.h"
#include "platform/file_system.h"

namespace sealkeeper {
namespace {

// The game directory itself has an empty lexical path, which is none for the system.
std::string AskedPath(const std::string& lexicalPath) {
    return "./" + lexicalPath;
}

ResultCode AddItem(const FileTree& tree, const std::string& path, EntryType type,
                   std::vector<InventoryItem>& items) {
    FileStatus status;
    if (type == EntryType::Other) {
        items.push_back({path, ItemKind::SpecialFile});
        return ResultCode::Ok;
    }
    const ResultCode code = tree.LookAtPath(AskedPath(path), status);
    if (type == EntryType::Link) {
        // A link into a dead mount is one to nothing, as it is for the walk.
        const bool isDangling = code != ResultCode::Ok || status.type == FileType::Missing;
        items.push_back({path, isDangling ? ItemKind::DanglingLink : ItemKind::Link});
        return ResultCode::Ok;
    }
    items.push_back({path, ItemKind::RegularFile, static_cast<std::uint64_t>(status.sizeBytes)});
    return code;
}

// Adds what `directory` holds to `items` and its directories to `waiting`.
ResultCode AddDirectory(const FileTree& tree, const std::string& directory,
                        std::vector<InventoryItem>& items, std::vector<std::string>& waiting) {
    std::optional<DirectoryEntries> entries;
    if (const ResultCode code = tree.ReadDirectory(AskedPath(directory), entries);
        code != ResultCode::Ok) {
        return code;
    }
    if (!entries) {
        items.push_back({directory, ItemKind::UnlistableDirectory});
        return ResultCode::Ok;
    }
    for (const DirectoryEntry& entry : *entries) {
        if (entry.name == "." || entry.name == "..") {
            continue;
        }
        std::string path = directory.empty() ? entry.name : directory + "/" + entry.name;
        if (entry.type == EntryType::Directory) {
            waiting.push_back(std::move(path));
        } else if (const ResultCode code = AddItem(tree, path, entry.type, items);
                   code != ResultCode::Ok) {
            return code;
        }
    }
    return ResultCode::Ok;
}

}  // namespace

ResultCode TakeInventory(const FileTree& tree, std::vector<InventoryItem>& items) {
    items.clear();
    // Not by recursion: a tree may be deeper than the stack.
    std::vector<std::string> waiting = {""};
    while (!waiting.empty()) {
        const std::string directory = std::move(waiting.back());
        waiting.pop_back();
        if (const ResultCode code = AddDirectory(tree, directory, items, waiting);
            code != ResultCode::Ok) {
            return code;
        }
    }
    return ResultCode::Ok;
}

}  // namespace sealkeeper
