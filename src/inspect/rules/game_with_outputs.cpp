#include "inspect/rules/game_with_outputs.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "inspect/tree/lexical_path.h"
#include "inspect/tree/path_below.h"

namespace sealkeeper {
namespace {

// The most links on one path, as in Linux; its ELOOP keeps a path from being followed for ever.
constexpr int kMostLinks = 40;

bool Holds(const DirectoryEntries& entries, const std::string& name) {
    return std::any_of(entries.begin(), entries.end(),
                       [&name](const DirectoryEntry& entry) { return entry.name == name; });
}

// The root is its own parent.
std::string ParentKeyOf(const std::string& key) {
    const std::string parent(ParentOf(key));
    return parent.empty() ? "/" : parent;
}

std::string KeyIn(const std::string& directory, std::string_view name) {
    return (directory == "/" ? "" : directory) + "/" + std::string(name);
}

// As `ResolvePath`, but empty where the system does not follow `path`. The C library resolves dot
// components by the text alone, also after a directory that this user may not search.
std::optional<std::string> ResolveFollowed(const std::string& path) {
    return GetFileType(path) == FileType::Missing ? std::nullopt : ResolvePath(path);
}

}  // namespace

GameWithOutputs::GameWithOutputs(std::string gameDirectory) : root_(std::move(gameDirectory)) {}

// Resolves links and ".." in `path`. The last component need not exist. Empty if the path cannot
// exist, for example below a file.
std::optional<GameWithOutputs::Key> GameWithOutputs::KeyOf(const std::string& path) const {
    int linksLeft = kMostLinks;
    return KeyOf(path, linksLeft);
}

// The same, following at most `linksLeft` links that the system cannot follow.
std::optional<GameWithOutputs::Key> GameWithOutputs::KeyOf(const std::string& path,
                                                           int& linksLeft) const {
    if (auto resolved = ResolveFollowed(path)) {
        return resolved;
    }
    // The system accepts no longer path.
    if (path.empty() || path.size() >= PATH_MAX) {
        return std::nullopt;
    }
    std::optional<Key> key = path.starts_with('/') ? "/" : root_;
    for (std::string_view rest = path; !rest.empty();) {
        const std::string_view name = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
        // Names, and also a trailing slash, are possible only after a directory.
        if (!IsDirectory(*key)) {
            return std::nullopt;
        }
        key = Step(*key, name, linksLeft);
        if (!key) {
            return std::nullopt;
        }
    }
    return path.ends_with('/') && !IsDirectory(*key) ? std::nullopt : key;
}

// Resolves `name` in `directory`. Empty for a link that dangles even with what was added, and for a
// dot component of a directory that this user may not search.
std::optional<GameWithOutputs::Key> GameWithOutputs::Step(const Key& directory,
                                                          std::string_view name,
                                                          int& linksLeft) const {
    if (name.empty()) {
        return directory;
    }
    if (name == "." || name == "..") {
        if (!MayBeSearched(directory)) {
            return std::nullopt;
        }
        return name == "." ? directory : ParentKeyOf(directory);
    }
    Key key = KeyIn(directory, name);
    if (auto resolved = ResolveFollowed(key)) {
        return resolved;
    }
    bool isLink = false;
    if (FileTree::LookForName(key, isLink) != ResultCode::Ok) {
        return std::nullopt;
    }
    return isLink ? TargetOf(key, linksLeft) : key;
}

// Resolves a link that the system cannot follow, since it may lead to or through something added.
// Empty if it does not.
std::optional<GameWithOutputs::Key> GameWithOutputs::TargetOf(const Key& link,
                                                              int& linksLeft) const {
    if (linksLeft-- == 0) {
        return std::nullopt;
    }
    const auto target = FollowLinks(link);
    const auto key = target ? KeyOf(*target, linksLeft) : std::nullopt;
    return key && (added_.contains(*key) || ResolvePath(*key)) ? key : std::nullopt;
}

bool GameWithOutputs::IsDirectory(const Key& key) const {
    const auto added = added_.find(key);
    return (added != added_.end() ? added->second : StatusOfPath(key)).type == FileType::Directory;
}

// Added directories are this user's own. The system looks for dot components in any other as for
// names, which takes the right to search it.
bool GameWithOutputs::MayBeSearched(const Key& directory) const {
    return added_.contains(directory) || GetFileType(KeyIn(directory, ".")) == FileType::Directory;
}

std::optional<std::string> GameWithOutputs::Resolve(const std::string& path) const {
    return KeyOf(path);
}

// Resolved, since a folder of the outputs may be a link.
std::string GameWithOutputs::LocationOf(const std::string& path) const {
    const auto key = KeyOf("./" + path);
    if (!key) {
        return path;
    }
    return std::string(PathBelow(*key, root_).value_or(*key));
}

void GameWithOutputs::Add(const std::string& path, const FileStatus& status) {
    const auto key = KeyOf("./" + path);
    // A link may lead back to something that exists, such as the game directory itself.
    if (key && !ResolvePath(*key)) {
        added_.emplace(*key, status);
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
    // Asked again by the resolved path: the system cannot follow one through added directories.
    if (const ResultCode again = FileTree::ReadDirectory(*key, entries); again != ResultCode::Ok) {
        return again;
    }
    const auto added = added_.find(*key);
    if (!entries && added != added_.end() && added->second.type == FileType::Directory) {
        entries = {{".", EntryType::Directory}, {"..", EntryType::Directory}};
    }
    if (entries) {
        AddEntriesOf(*key, *entries);
    }
    return ResultCode::Ok;
}

// The parent of an added path that is the same directory as `directory`, which exists. Compared by
// device and inode, since different paths may lead there.
std::optional<GameWithOutputs::Key> GameWithOutputs::ParentAt(const std::string& directory) const {
    const FileStatus status = StatusOfPath(directory);
    for (const auto& [path, unused] : added_) {
        Key parent = ParentKeyOf(path);
        const FileStatus other = StatusOfPath(parent);
        if (other.type == FileType::Directory && other.device == status.device &&
            other.serial == status.serial) {
            return parent;
        }
    }
    return std::nullopt;
}

void GameWithOutputs::AddEntriesOf(const Key& directory, DirectoryEntries& entries) const {
    for (const auto& [path, status] : added_) {
        if (ParentKeyOf(path) != directory) {
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
    return FileTree::LookAtPath(*key, status);
}

ResultCode GameWithOutputs::LookForName(const std::string& path, bool& isThere) const {
    const ResultCode code = FileTree::LookForName(path, isThere);
    const auto key = isThere ? std::nullopt : KeyOf(path);
    if (!key) {
        return code;
    }
    isThere = added_.contains(*key);
    return isThere ? ResultCode::Ok : FileTree::LookForName(*key, isThere);
}

}  // namespace sealkeeper
