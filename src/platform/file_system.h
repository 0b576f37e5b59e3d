// Queries of the file system, and the creation of directories. Symbolic links are followed, as
// POSIX `stat` does.
#ifndef SEALKEEPER_PLATFORM_FILE_SYSTEM_H
#define SEALKEEPER_PLATFORM_FILE_SYSTEM_H

#include <cstdint>
#include <optional>
#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// `Missing`: nothing is there, or nothing that this user may look at. `Unknown`: the system failed
// to tell, so something may well be there.
enum class FileType { Missing, Unknown, Regular, Directory, Fifo, Socket, Other };

// What POSIX `stat` tells about a file. The size is 0 for a FIFO, a socket or a device, whatever
// the system reports, and for what is missing or unknown.
struct FileStatus {
    FileType type = FileType::Missing;
    std::int64_t sizeBytes = 0;
    // The identity of the file while it exists (POSIX `st_dev`, `st_ino`).
    std::uint64_t device = 0;
    std::uint64_t serial = 0;
    // How many names it has in its file system: 0 once it is removed or replaced.
    std::uint64_t linkCount = 0;
    // When the content, the names or the permissions last changed, at the resolution of the file
    // system (POSIX `st_ctim`).
    std::int64_t changeSeconds = 0;
    std::int64_t changeNanoseconds = 0;

    bool operator==(const FileStatus&) const = default;
};

// The status of the open file `descriptor`; `Unknown` when the system fails to tell.
[[nodiscard]] FileStatus StatusOfOpenFile(int descriptor);

// What `path` names. When `stat` fails, errno keeps the reason, which decides between `Missing` and
// `Unknown`; see `TellsOfThePath`.
[[nodiscard]] FileType GetFileType(const std::string& path);

// The status of what `path` names, under the same conditions. Opens nothing.
[[nodiscard]] FileStatus StatusOfPath(const std::string& path);

// Whether the errno of a call that takes a path is about that path (nothing is there, or this user
// may not look at it) and not about the system.
[[nodiscard]] bool TellsOfThePath(int systemError);

// `Ok` for an errno about `path`; `SealkeeperIOError`, logged, for one that says that the system
// failed to look at it.
ResultCode JudgeLookError(const std::string& path, int systemError);

// Sets `status` to that of `StatusOfPath`, errno included. Fails as `JudgeLookError` does.
ResultCode LookAtPath(const std::string& path, FileStatus& status);

// The absolute path without links and dot components (POSIX `realpath`). Nothing for an empty path
// or one that does not resolve; errno says why.
[[nodiscard]] std::optional<std::string> ResolvePath(const std::string& path);

// The path at the end of the chain of symbolic links that begins at `path`; nothing needs to exist
// there. Links among the directories of a path are kept. Nothing when a link cannot be read or the
// chain is longer than 40 links.
[[nodiscard]] std::optional<std::string> FollowLinks(const std::string& path);

// The current directory of the process. Nothing when the system fails to tell it or it is longer
// than 1023 bytes.
[[nodiscard]] std::optional<std::string> CurrentDirectory();

// Creates `path` and all its missing parents, with mode 0777 less the umask. Returns whether `path`
// is a directory afterwards.
[[nodiscard]] bool CreateDirectories(const std::string& path);

}  // namespace sealkeeper

#endif
