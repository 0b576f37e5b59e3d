#include "inspect/tree/directory_walk.h"

#include <utility>

namespace sealkeeper {
namespace {

bool IsDots(const std::string& name) {
    return name == "." || name == "..";
}

}  // namespace

DirectoryWalk::DirectoryWalk(const FileTree& tree) : tree_(tree) {}

ResultCode DirectoryWalk::Next(WalkedDirectory& directory) {
    directory = {std::move(waiting_.back()), std::nullopt};
    waiting_.pop_back();
    std::optional<DirectoryEntries> entries;
    // The system has no file with an empty path.
    const std::string asked = directory.path.empty() ? "." : directory.path;
    if (const ResultCode code = tree_.ReadDirectory(asked, entries);
        code != ResultCode::Ok || !entries) {
        return code;
    }
    directory.items.emplace();
    for (const DirectoryEntry& entry : *entries) {
        if (IsDots(entry.name)) {
            continue;
        }
        std::string path = directory.path.empty() ? entry.name : directory.path + "/" + entry.name;
        if (entry.type == EntryType::Directory) {
            waiting_.push_back(std::move(path));
        } else {
            directory.items->push_back({std::move(path), entry.type});
        }
    }
    return ResultCode::Ok;
}

}  // namespace sealkeeper
