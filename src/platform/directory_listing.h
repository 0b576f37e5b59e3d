// One directory's entries, sorted or as the system gives them.
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

// Sets `entries` to those of `directory` in the order in which POSIX `readdir` returns them; "."
// and ".." and other names that begin with a dot are among them. Nothing when it is missing, no
// directory, or must not be read. Fails with `SealkeeperIOError`, logged, when the system fails to
// read it: what was read of it by then says nothing of the rest.
ResultCode ReadDirectory(const std::string& directory, std::optional<DirectoryEntries>& entries);

// Sorts `entries` as by POSIX `alphasort`.
void SortEntries(DirectoryEntries& entries);

// Both.
ResultCode ListDirectory(const std::string& directory, std::optional<DirectoryEntries>& entries);

// Sets `type` to that of the entry at `path`, asked with `lstat`, for file systems whose
// directories do not report it: `Other` when it is gone or must not be looked at. Fails with
// `SealkeeperIOError`, logged, when the system fails to look.
ResultCode LinkStatusType(const std::string& path, EntryType& type);

}  // namespace sealkeeper

#endif
