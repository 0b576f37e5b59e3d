#include "inspect/check/unlisted_files.h"

#include <optional>
#include <string>
#include <utility>

#include "inspect/check/link_target.h"
#include "inspect/check/unreadable_reason.h"
#include "inspect/report/console.h"
#include "platform/directory_listing.h"

namespace sealkeeper {
namespace {

class Walk {
  public:
    explicit Walk(const ListedPaths& listed) : listed_(listed) {}

    std::vector<Addition> Run() {
        // No recursion: how deep directories lie is not the program's to say.
        directories_.emplace_back();
        while (!directories_.empty()) {
            const std::string directory = std::move(directories_.back());
            directories_.pop_back();
            LookInto(directory);
        }
        return std::move(additions_);
    }

  private:
    // `directory` is empty for the current one.
    void LookInto(const std::string& directory) {
        const std::string name = directory.empty() ? "." : directory;
        std::optional<DirectoryEntries> entries;
        if (ReadDirectory(name, entries) != ResultCode::Ok) {
            Add(AdditionKind::NotLookedAt, name, {}, LastLoggedError());
            return;
        }
        if (!entries) {
            Add(AdditionKind::NotLookedAt, name, {}, UnreadableDirectoryReason(name));
            return;
        }
        for (const DirectoryEntry& entry : *entries) {
            if (entry.name != "." && entry.name != "..") {
                LookAt(directory.empty() ? entry.name : directory + "/" + entry.name, entry.type);
            }
        }
    }

    void LookAt(std::string path, EntryType type) {
        if (type == EntryType::Directory) {
            directories_.push_back(std::move(path));
            return;
        }
        if (listed_.Has(path)) {
            return;
        }
        switch (type) {
            case EntryType::Regular:
                Add(AdditionKind::UnlistedFile, std::move(path));
                break;
            case EntryType::Link:
                Add(AdditionKind::UnlistedLink, path, LinkTarget(path));
                break;
            case EntryType::Directory:
            case EntryType::Other:
                Add(AdditionKind::UnlistedSpecialFile, std::move(path));
                break;
        }
    }

    void Add(AdditionKind kind, std::string path, std::string target = {},
             std::string reason = {}) {
        additions_.push_back({kind, std::move(path), std::move(target), 0, std::move(reason)});
    }

    const ListedPaths& listed_;
    std::vector<std::string> directories_;
    std::vector<Addition> additions_;
};

}  // namespace

std::vector<Addition> FindUnlistedFiles(const ListedPaths& listed) {
    return Walk(listed).Run();
}

}  // namespace sealkeeper
