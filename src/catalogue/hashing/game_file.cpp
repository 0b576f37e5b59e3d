#include "catalogue/hashing/game_file.h"

#include <utility>

#include "catalogue/hashing/game_file_index.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

// Gets the status first: it tells whether to open at all, and costs no more system calls than fstat
// after opening.
GameFile OpenAt(const std::string& path, const FileStatus& seen) {
    GameFile found{seen.type == FileType::Missing ? StatusOfPath(path) : seen, nullptr, {}};
    if (found.status.type != FileType::Regular && found.status.type != FileType::Directory) {
        return found;
    }
    auto file = std::make_shared<InputFile>();
    if (file->Open(path)) {
        if (file->HasWaited()) {
            found.status = file->Status();
        }
        found.file = std::move(file);
    }
    return found;
}

}  // namespace

GameFile OpenGameFile(const std::wstring& path, const FileStatus& seen) {
    GameFile found = OpenAt(WideToUtf8(path), seen);
    std::wstring realPath;
    if (!found.file && FindGameFile(ProcessGameFileIndex(), path, realPath)) {
        found = OpenAt(WideToUtf8(realPath), {});
        found.indexedPath = std::move(realPath);
    }
    return found;
}

}  // namespace sealkeeper
