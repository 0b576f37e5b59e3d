// The entries of one directory, sorted or in the order of the system.
#ifndef SEALKEEPER_PLATFORM_DIRECTORY_LISTING_H
#define SEALKEEPER_PLATFORM_DIRECTORY_LISTING_H

#include <optional>
#include <string>
#include <vector>

#include "app/result_code.h"

namespace sealkeeper {

// The type of the entry itself: a symbolic link is `Link`, whatever it points to.
enum class EntryType { Regular, Directory, Link, Other };

struct DirectoryEntry {
    std::string name;
    EntryType type;
};

using DirectoryEntries = std::vector<DirectoryEntry>;

// Sets `entries` to those of `directory` in the order in which POSIX `readdir` returns them,
// including ".", ".." and other names that begin with a dot. Nothing when it is missing, is not a
// directory, or may not be read by this user. Fails with `SealkeeperIOError`, logged, when the
// system fails to read it; `entries` is nothing then, because a partial list would hide entries.
ResultCode ReadDirectory(const std::string& directory, std::optional<DirectoryEntries>& entries);

// Sorts `entries` in the order of POSIX `alphasort`: by `strcoll`.
void SortEntries(DirectoryEntries& entries);

// `ReadDirectory`, then `SortEntries`.
ResultCode ListDirectory(const std::string& directory, std::optional<DirectoryEntries>& entries);

// Sets `type` to that of the entry at `path`, from `lstat`, for file systems whose directories do
// not report it. `Other` when the entry is gone or this user may not look at it. Fails with
// `SealkeeperIOError`, logged, when the system fails to look.
ResultCode LinkStatusType(const std::string& path, EntryType& type);

}  // namespace sealkeeper

#endif
