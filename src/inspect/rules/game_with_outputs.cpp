#include "inspect/rules/game_with_outputs.h"

#include <algorithm>
#include <utility>

#include "inspect/rules/lexical_path.h"

namespace sealkeeper {
namespace {

bool Holds(const DirectoryEntries& entries, const std::string& name) {
    return std::any_of(entries.begin(), entries.end(),
                       [&name](const DirectoryEntry& entry) { return entry.name == name; });
}

}  // namespace

GameWithOutputs::GameWithOutputs() : root_(ResolvePath(".").value_or("")) {}

// The path from the game directory that `path` leads to, by links and "..", as far as it is there;
// one that is not in the game is absolute.
std::string GameWithOutputs::KeyOf(const std::string& path) const {
    if (const auto resolved = ResolvePath(path)) {
        if (*resolved == root_) {
            return {};
        }
        const std::string below = root_ + "/";
        return resolved->starts_with(below) ? resolved->substr(below.size()) : *resolved;
    }
    const std::string lexical = LexicalPath(path);
    const std::string_view parent = ParentOf(lexical);
    // Nothing there, or nothing yet: what leads to it is.
    const std::string above = parent.empty() ? "" : KeyOf(std::string(parent));
    return above.empty() ? std::string(NameOf(lexical))
                         : above + "/" + std::string(NameOf(lexical));
}

void GameWithOutputs::AddDirectory(const std::string& path) {
    FileStatus status;
    status.type = FileType::Directory;
    added_.emplace(path, status);
}

void GameWithOutputs::AddFile(const std::string& path, std::uint64_t sizeBytes) {
    FileStatus status;
    status.type = FileType::Regular;
    status.sizeBytes = static_cast<std::int64_t>(sizeBytes);
    added_.emplace(path, status);
}

ResultCode GameWithOutputs::ReadDirectory(const std::string& directory,
                                          std::optional<DirectoryEntries>& entries) const {
    if (const ResultCode code = FileTree::ReadDirectory(directory, entries);
        code != ResultCode::Ok) {
        return code;
    }
    const std::string key = KeyOf(directory);
    if (!entries && added_.contains(key)) {
        entries.emplace();
    }
    if (!entries) {
        return ResultCode::Ok;
    }
    for (const auto& [path, status] : added_) {
        if (ParentOf(path) != key) {
            continue;
        }
        std::string name(NameOf(path));
        if (!Holds(*entries, name)) {
            entries->push_back({std::move(name), status.type == FileType::Directory
                                                     ? EntryType::Directory
                                                     : EntryType::Regular});
        }
    }
    return ResultCode::Ok;
}

ResultCode GameWithOutputs::LookAtPath(const std::string& path, FileStatus& status) const {
    const ResultCode code = FileTree::LookAtPath(path, status);
    if (status.type == FileType::Missing) {
        if (const auto found = added_.find(KeyOf(path)); found != added_.end()) {
            status = found->second;
        }
    }
    return code;
}

ResultCode GameWithOutputs::LookForName(const std::string& path, bool& isThere) const {
    const ResultCode code = FileTree::LookForName(path, isThere);
    isThere = isThere || added_.contains(KeyOf(path));
    return code;
}

}  // namespace sealkeeper
