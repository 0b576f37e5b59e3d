// Questions to the file system and the creation of directories. Symbolic links are followed, as by
// POSIX `stat`.
#ifndef SEALKEEPER_PLATFORM_FILE_SYSTEM_H
#define SEALKEEPER_PLATFORM_FILE_SYSTEM_H

#include <cstdint>
#include <optional>
#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// `Missing` is what names nothing, or nothing that this user may look at. `Unknown` is what the
// system failed to tell: it may well be there.
enum class FileType { Missing, Unknown, Regular, Directory, Fifo, Socket, Other };

// What POSIX `stat` tells of a file. A FIFO, a socket and a device have no size and count as 0,
// whatever the system reports as waiting in them; so does what is missing or unknown.
struct FileStatus {
    FileType type = FileType::Missing;
    std::int64_t sizeBytes = 0;
    // Which file it is, as long as it exists (POSIX `st_dev`, `st_ino`).
    std::uint64_t device = 0;
    std::uint64_t serial = 0;
    // How many names it has in its file system: none once it was removed or replaced.
    std::uint64_t linkCount = 0;
    // When the content, the names or the permissions last changed, as finely as the system tells
    // times apart (POSIX `st_ctim`).
    std::int64_t changeSeconds = 0;
    std::int64_t changeNanoseconds = 0;

    bool operator==(const FileStatus&) const = default;
};

// The status of the open file `descriptor`, `Unknown` when it cannot be told.
[[nodiscard]] FileStatus StatusOfOpenFile(int descriptor);

// What `path` names. When `stat` fails, errno tells the reason, which decides between `Missing` and
// `Unknown`, see `TellsOfThePath`.
[[nodiscard]] FileType GetFileType(const std::string& path);

// The status of what `path` names, under the same conditions; nothing is ever opened here.
[[nodiscard]] FileStatus StatusOfPath(const std::string& path);

// Whether an errno of a call that was given a path tells of that path, and not of the system:
// nothing is there, or it must not be looked at.
[[nodiscard]] bool TellsOfThePath(int systemError);

// `Ok` for an errno that tells of `path`; `SealkeeperIOError`, logged, for one that tells of a
// fault of the system, which failed to look at it.
ResultCode JudgeLookError(const std::string& path, int systemError);

// Sets `status` as `StatusOfPath` tells it, errno included. Fails as `JudgeLookError`.
ResultCode LookAtPath(const std::string& path, FileStatus& status);

// The absolute path without links and dot components (POSIX `realpath`); nothing for an empty path
// and for one that does not resolve.
[[nodiscard]] std::optional<std::string> ResolvePath(const std::string& path);

// The path that `path` leads to when it names a symbolic link, and that one a further one, and so
// on; there need be nothing at its end. Links among the directories stay. Nothing when a link
// cannot be read or they lead on too far.
[[nodiscard]] std::optional<std::string> FollowLinks(const std::string& path);

// The current directory of the process; nothing when it cannot be told or has more than 1023 bytes.
[[nodiscard]] std::optional<std::string> CurrentDirectory();

// Creates `path` and all its missing parents, as far as the process's file mode mask allows open to
// all. Returns true when `path` is a directory afterwards.
[[nodiscard]] bool CreateDirectories(const std::string& path);

}  // namespace sealkeeper

#endif
