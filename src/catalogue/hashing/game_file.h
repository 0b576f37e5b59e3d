// The one place that opens a file of the game.
#ifndef SEALKEEPER_CATALOGUE_HASHING_GAME_FILE_H
#define SEALKEEPER_CATALOGUE_HASHING_GAME_FILE_H

#include <memory>
#include <string>

#include "platform/file_system.h"
#include "platform/input_file.h"

namespace sealkeeper {

// A file as it was found. Whether it changed since is told by comparing the status of the open file
// with this one.
struct GameFile {
    // What the path named before it was opened, or after it had to be waited for; `Missing` when
    // there is nothing.
    FileStatus status;
    // Null when it cannot be opened or was not. Closed when the last holder lets go.
    std::shared_ptr<const InputFile> file;
    // The path that the index has for it, when it was opened there; else empty.
    std::wstring indexedPath;
};

// Looks at what `path` names and opens it for reading if it is a regular file or a directory (which
// can be opened, but not read). Nothing else is opened: to open a FIFO lets a waiting writer go,
// and to open a device may have effects. Where `path` cannot be opened, the path that the process's
// game-file index has for it is tried. Lack of memory is an exception.
//
// `seen` is what somebody saw there before, as the walk does; `Missing` stands for nobody having
// looked. Nobody looks again then, so a FIFO that took the file's place since is opened. The status
// of the open file tells of that when the file's turn comes.
[[nodiscard]] GameFile OpenGameFile(const std::wstring& path, const FileStatus& seen = {});

}  // namespace sealkeeper

#endif
