#include "platform/file_system.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>

namespace sealkeeper {
namespace {

constexpr std::size_t kCurrentDirectoryBufferBytes = 1024;

// Restricted further by the file mode mask of the process.
constexpr mode_t kDirectoryMode = S_IRWXU | S_IRWXG | S_IRWXO;

struct MallocDeleter {
    void operator()(char* text) const {
        std::free(text);
    }  // NOLINT: realpath allocates with malloc
};

}  // namespace

FileType GetFileType(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return FileType::Missing;
    }
    if (S_ISREG(status.st_mode)) {
        return FileType::Regular;
    }
    if (S_ISDIR(status.st_mode)) {
        return FileType::Directory;
    }
    return S_ISFIFO(status.st_mode) ? FileType::Fifo : FileType::Other;
}

std::int64_t FileSizeBytes(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return 0;
    }
    // POSIX leaves st_size undefined for other types; some systems put the bytes waiting in a FIFO
    // there.
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode) ? status.st_size : 0;
}

std::optional<std::string> ResolvePath(const std::string& path) {
    const std::unique_ptr<char, MallocDeleter> resolved(realpath(path.c_str(), nullptr));
    if (!resolved) {
        return std::nullopt;
    }
    return std::string(resolved.get());
}

std::optional<std::string> CurrentDirectory() {
    std::array<char, kCurrentDirectoryBufferBytes> buffer{};
    if (getcwd(buffer.data(), buffer.size()) == nullptr) {
        return std::nullopt;
    }
    return std::string(buffer.data());
}

bool CreateDirectories(const std::string& path) {
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1)) {
        // A parent that is there already, or cannot be made, shows in the check at the end.
        static_cast<void>(mkdir(path.substr(0, end).c_str(), kDirectoryMode));
    }
    static_cast<void>(mkdir(path.c_str(), kDirectoryMode));
    return GetFileType(path) == FileType::Directory;
}

}  // namespace sealkeeper
