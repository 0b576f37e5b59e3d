#include "platform/directory_listing.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>

namespace sealkeeper {
namespace {

// Owner of the array that POSIX `scandir` allocates: the entries and the array itself.
class ScannedDirectory {
  public:
    explicit ScannedDirectory(const std::string& directory)
        : count_(scandir(directory.c_str(), &entries_, nullptr, alphasort)) {}
    ScannedDirectory(const ScannedDirectory&) = delete;
    ScannedDirectory& operator=(const ScannedDirectory&) = delete;
    ~ScannedDirectory() {
        for (dirent* entry : Entries()) {
            std::free(entry);  // NOLINT: scandir allocates with malloc
        }
        std::free(entries_);  // NOLINT
    }

    [[nodiscard]] bool IsRead() const { return count_ >= 0; }
    [[nodiscard]] std::span<dirent*> Entries() const {
        return IsRead() ? std::span<dirent*>(entries_, static_cast<std::size_t>(count_))
                        : std::span<dirent*>();
    }

  private:
    dirent** entries_ = nullptr;
    int count_;
};

struct DirectoryCloser {
    void operator()(DIR* stream) const { closedir(stream); }
};

using DirectoryStream = std::unique_ptr<DIR, DirectoryCloser>;

EntryType TypeOf(const dirent& entry, const std::string& directory) {
#ifdef DT_UNKNOWN
    // d_type saves a system call for each entry, but not every file system fills it.
    switch (entry.d_type) {
        case DT_REG:
            return EntryType::Regular;
        case DT_DIR:
            return EntryType::Directory;
        case DT_UNKNOWN:
            break;
        default:
            return EntryType::Other;
    }
#endif
    return LinkStatusType(directory + entry.d_name);
}

}  // namespace

std::optional<std::vector<DirectoryEntry>> ListDirectory(const std::string& directory) {
    const ScannedDirectory scanned(directory);
    if (!scanned.IsRead()) {
        return std::nullopt;
    }
    std::vector<DirectoryEntry> listed;
    listed.reserve(scanned.Entries().size());
    for (const dirent* entry : scanned.Entries()) {
        listed.push_back({entry->d_name, TypeOf(*entry, directory)});
    }
    return listed;
}

std::optional<std::vector<DirectoryEntry>> ReadDirectory(const std::string& directory) {
    const DirectoryStream stream(opendir(directory.c_str()));
    if (!stream) {
        return std::nullopt;
    }
    std::vector<DirectoryEntry> entries;
    while (const dirent* entry = readdir(stream.get())) {
        entries.push_back({entry->d_name, TypeOf(*entry, directory)});
    }
    return entries;
}

EntryType LinkStatusType(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        return EntryType::Other;
    }
    if (S_ISREG(status.st_mode)) {
        return EntryType::Regular;
    }
    return S_ISDIR(status.st_mode) ? EntryType::Directory : EntryType::Other;
}

}  // namespace sealkeeper
