// One directory's entries, sorted or as the system gives them.
#ifndef SEALKEEPER_PLATFORM_DIRECTORY_LISTING_H
#define SEALKEEPER_PLATFORM_DIRECTORY_LISTING_H

#include <optional>
#include <string>
#include <vector>

namespace sealkeeper {

// The type of the entry itself: a symbolic link is `Other`, whatever it points to.
enum class EntryType { Regular, Directory, Other };

struct DirectoryEntry {
    std::string name;
    EntryType type;
};

// The entries of `directory`, which ends in '/', sorted by `alphasort`; "." and ".." and other
// names that begin with a dot are among them. Nothing when the directory cannot be read.
[[nodiscard]] std::optional<std::vector<DirectoryEntry>> ListDirectory(
    const std::string& directory);

// The same entries in the order in which POSIX `readdir` returns them.
[[nodiscard]] std::optional<std::vector<DirectoryEntry>> ReadDirectory(
    const std::string& directory);

// The type of the entry at `path`, asked with `lstat`, for file systems whose directories do not
// report it. `Other` when `lstat` fails.
[[nodiscard]] EntryType LinkStatusType(const std::string& path);

}  // namespace sealkeeper

#endif
