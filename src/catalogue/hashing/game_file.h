// The only place that opens a file of the game to hash it.
#ifndef SEALKEEPER_CATALOGUE_HASHING_GAME_FILE_H
#define SEALKEEPER_CATALOGUE_HASHING_GAME_FILE_H

#include <memory>
#include <string>

#include "platform/file_system.h"
#include "platform/input_file.h"

namespace sealkeeper {

// A file as it was found. To detect later changes, compare this status with that of the open file.
struct GameFile {
    // The status of what the path named before it was opened, or after opening it had to wait for a
    // lease. `Missing` when there is nothing.
    FileStatus status;
    // Null when it could not be, or was not, opened. Closed when the last owner is destroyed.
    std::shared_ptr<const InputFile> file;
    // The path in the index, if it was opened there; else empty.
    std::wstring indexedPath;
};

// Looks at what `path` names and opens it for reading if it is a regular file or a directory (which
// can be opened, but not read). Nothing else is opened: opening a FIFO releases a waiting writer,
// and opening a device may have side effects. If `path` cannot be opened, the path that the
// game-file index of the process has for it is tried. Lack of memory is an exception.
//
// `seen` is an earlier status of the path, for example from the walk; `Missing` means none. With an
// earlier status the path is not looked at again, so a FIFO that has replaced the file since is
// opened. The status of the open file shows that when the file's turn comes.
[[nodiscard]] GameFile OpenGameFile(const std::wstring& path, const FileStatus& seen = {});

}  // namespace sealkeeper

#endif
