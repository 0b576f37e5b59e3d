#include "inspect/rules/game_with_outputs.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "inspect/tree/lexical_path.h"

namespace sealkeeper {
namespace {

bool Holds(const DirectoryEntries& entries, const std::string& name) {
    return std::any_of(entries.begin(), entries.end(),
                       [&name](const DirectoryEntry& entry) { return entry.name == name; });
}

}  // namespace

GameWithOutputs::GameWithOutputs(std::string gameDirectory) : root_(std::move(gameDirectory)) {}

// The path from the game directory that `path` leads to by links and "..", which need not be there,
// but all before it; nothing where it leads nowhere. One that is not in the game is absolute.
std::optional<std::string> GameWithOutputs::KeyOf(const std::string& path) const {
    if (const auto resolved = ResolvePath(path)) {
        if (*resolved == root_) {
            return std::string();
        }
        const std::string below = root_ + "/";
        return resolved->starts_with(below) ? resolved->substr(below.size()) : *resolved;
    }
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string::npos) {
        return std::nullopt;
    }
    const std::size_t slash = path.rfind('/', end);
    const std::size_t nameBegin = slash == std::string::npos ? 0 : slash + 1;
    const std::string name = path.substr(nameBegin, end + 1 - nameBegin);
    const std::string parent = slash == std::string::npos ? "." : path.substr(0, slash);
    // The current directory itself is not to be found.
    if (parent == path) {
        return std::nullopt;
    }
    auto above = KeyOf(parent);
    if (!above || !HasKey(*above)) {
        return std::nullopt;
    }
    if (name == ".") {
        return above;
    }
    if (name == "..") {
        return std::string(ParentOf(*above));
    }
    return above->empty() ? name : *above + "/" + name;
}

std::string GameWithOutputs::AbsolutePathOf(const std::string& key) const {
    return key.starts_with('/') ? key : root_ + "/" + key;
}

bool GameWithOutputs::HasKey(const std::string& key) const {
    return added_.contains(key) || ResolvePath(AbsolutePathOf(key));
}

// A folder of the outputs may be a link.
std::string GameWithOutputs::LocationOf(const std::string& path) const {
    return KeyOf("./" + path).value_or(path);
}

void GameWithOutputs::Add(const std::string& path, const FileStatus& status) {
    const std::string key = LocationOf(path);
    // A link may lead back to the game directory itself.
    if (!key.empty()) {
        added_.emplace(key, status);
    }
}

void GameWithOutputs::AddDirectory(const std::string& path) {
    FileStatus status;
    status.type = FileType::Directory;
    Add(path, status);
}

void GameWithOutputs::AddFile(const std::string& path, std::uint64_t sizeBytes) {
    FileStatus status;
    status.type = FileType::Regular;
    status.sizeBytes = static_cast<std::int64_t>(sizeBytes);
    Add(path, status);
}

ResultCode GameWithOutputs::ReadDirectory(const std::string& directory,
                                          std::optional<DirectoryEntries>& entries) const {
    const ResultCode code = FileTree::ReadDirectory(directory, entries);
    if (code != ResultCode::Ok) {
        return code;
    }
    if (entries) {
        if (const auto parent = ParentAt(directory)) {
            AddEntriesOf(*parent, *entries);
        }
        return ResultCode::Ok;
    }
    const auto key = KeyOf(directory);
    if (!key) {
        return ResultCode::Ok;
    }
    // The system does not know the way through what is not there.
    if (const ResultCode again = FileTree::ReadDirectory(AbsolutePathOf(*key), entries);
        again != ResultCode::Ok) {
        return again;
    }
    const auto added = added_.find(*key);
    if (!entries && added != added_.end() && added->second.type == FileType::Directory) {
        entries.emplace();
    }
    if (entries) {
        AddEntriesOf(*key, *entries);
    }
    return ResultCode::Ok;
}

// The directory of what was added that `directory`, which is there, is. Told by what it is on the
// disk: its path may lead there in any way.
std::optional<std::string> GameWithOutputs::ParentAt(const std::string& directory) const {
    const FileStatus status = StatusOfPath(directory);
    for (const auto& [path, unused] : added_) {
        const std::string parent(ParentOf(path));
        const FileStatus other = StatusOfPath(AbsolutePathOf(parent));
        if (other.type == FileType::Directory && other.device == status.device &&
            other.serial == status.serial) {
            return parent;
        }
    }
    return std::nullopt;
}

void GameWithOutputs::AddEntriesOf(const std::string& directory, DirectoryEntries& entries) const {
    for (const auto& [path, status] : added_) {
        if (ParentOf(path) != directory) {
            continue;
        }
        std::string name(NameOf(path));
        if (!Holds(entries, name)) {
            entries.push_back({std::move(name), status.type == FileType::Directory
                                                    ? EntryType::Directory
                                                    : EntryType::Regular});
        }
    }
}

ResultCode GameWithOutputs::LookAtPath(const std::string& path, FileStatus& status) const {
    const ResultCode code = FileTree::LookAtPath(path, status);
    const auto key = status.type == FileType::Missing ? KeyOf(path) : std::nullopt;
    if (!key) {
        return code;
    }
    if (const auto added = added_.find(*key); added != added_.end()) {
        status = added->second;
        return ResultCode::Ok;
    }
    return FileTree::LookAtPath(AbsolutePathOf(*key), status);
}

ResultCode GameWithOutputs::LookForName(const std::string& path, bool& isThere) const {
    const ResultCode code = FileTree::LookForName(path, isThere);
    const auto key = isThere ? std::nullopt : KeyOf(path);
    if (!key) {
        return code;
    }
    isThere = added_.contains(*key);
    return isThere ? ResultCode::Ok : FileTree::LookForName(AbsolutePathOf(*key), isThere);
}

}  // namespace sealkeeper
