#include "platform/directory_listing.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include "app/console_log.h"
#include "platform/file_system.h"

namespace sealkeeper {
namespace {

struct DirectoryCloser {
    void operator()(DIR* stream) const { closedir(stream); }
};

using DirectoryStream = std::unique_ptr<DIR, DirectoryCloser>;

ResultCode ReportUnreadable(const std::string& directory, int systemError) {
    Log(LogLevel::Error, "Could not read the directory '%s': %s.\n", directory.c_str(),
        std::strerror(systemError));
    return ResultCode::SealkeeperIOError;
}

// The type in `entry`, if the system put one there.
std::optional<EntryType> ToldType([[maybe_unused]] const dirent& entry) {
#ifdef DT_UNKNOWN
    // Saves a system call for each entry, but not every file system provides it.
    switch (entry.d_type) {
        case DT_REG:
            return EntryType::Regular;
        case DT_DIR:
            return EntryType::Directory;
        case DT_LNK:
            return EntryType::Link;
        case DT_UNKNOWN:
            return std::nullopt;
        default:
            return EntryType::Other;
    }
#else
    return std::nullopt;
#endif
}

EntryType TypeOfMode(mode_t mode) {
    if (S_ISREG(mode)) {
        return EntryType::Regular;
    }
    if (S_ISLNK(mode)) {
        return EntryType::Link;
    }
    return S_ISDIR(mode) ? EntryType::Directory : EntryType::Other;
}

ResultCode AddEntry(const std::string& directory, const dirent& found, DirectoryEntries& entries) {
    DirectoryEntry entry{found.d_name, EntryType::Other};
    if (const auto told = ToldType(found)) {
        entry.type = *told;
    } else if (const ResultCode code = LinkStatusType(directory + "/" + entry.name, entry.type);
               code != ResultCode::Ok) {
        return code;
    }
    entries.push_back(std::move(entry));
    return ResultCode::Ok;
}

}  // namespace

ResultCode ReadDirectory(const std::string& directory, std::optional<DirectoryEntries>& entries) {
    entries.reset();
    const DirectoryStream stream(opendir(directory.c_str()));
    if (!stream) {
        return TellsOfThePath(errno) ? ResultCode::Ok : ReportUnreadable(directory, errno);
    }
    DirectoryEntries read;
    // Only errno tells a failure from the end.
    errno = 0;
    while (const dirent* entry = readdir(stream.get())) {
        if (const ResultCode code = AddEntry(directory, *entry, read); code != ResultCode::Ok) {
            return code;
        }
        errno = 0;
    }
    // A directory that was removed after it was opened is not a failure of the system.
    if (errno != 0 && errno != ENOENT) {
        return ReportUnreadable(directory, errno);
    }
    entries = std::move(read);
    return ResultCode::Ok;
}

void SortEntries(DirectoryEntries& entries) {
    std::sort(entries.begin(), entries.end(),
              [](const DirectoryEntry& left, const DirectoryEntry& right) {
                  return std::strcoll(left.name.c_str(), right.name.c_str()) < 0;
              });
}

ResultCode ListDirectory(const std::string& directory, std::optional<DirectoryEntries>& entries) {
    const ResultCode code = ReadDirectory(directory, entries);
    if (entries) {
        SortEntries(*entries);
    }
    return code;
}

ResultCode LinkStatusType(const std::string& path, EntryType& type) {
    type = EntryType::Other;
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        return JudgeLookError(path, errno);
    }
    type = TypeOfMode(status.st_mode);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
