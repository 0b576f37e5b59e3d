#include "platform/file_system.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "app/console_log.h"

namespace sealkeeper {
namespace {

constexpr std::size_t kCurrentDirectoryBufferBytes = 1024;

// At least as many as any supported system follows when it opens a file.
constexpr int kMostLinks = 40;

// Less the umask.
constexpr mode_t kDirectoryMode = S_IRWXU | S_IRWXG | S_IRWXO;

struct MallocDeleter {
    void operator()(char* text) const {
        std::free(text);
    }  // NOLINT: realpath allocates with malloc
};

FileType TypeFrom(mode_t mode) {
    if (S_ISREG(mode)) {
        return FileType::Regular;
    }
    if (S_ISDIR(mode)) {
        return FileType::Directory;
    }
    if (S_ISSOCK(mode)) {
        return FileType::Socket;
    }
    return S_ISFIFO(mode) ? FileType::Fifo : FileType::Other;
}

const timespec& ChangeTimeOf(const struct stat& status) {
#if defined(__APPLE__)
    return status.st_ctimespec;
#else
    return status.st_ctim;
#endif
}

FileStatus StatusFrom(const struct stat& status) {
    const FileType type = TypeFrom(status.st_mode);
    // POSIX leaves st_size undefined for other types. Some systems report the bytes waiting in a
    // FIFO.
    const bool hasSize = type == FileType::Regular || type == FileType::Directory;
    const timespec& changeTime = ChangeTimeOf(status);
    return {type,
            hasSize ? status.st_size : 0,
            static_cast<std::uint64_t>(status.st_dev),
            status.st_ino,
            status.st_nlink,
            changeTime.tv_sec,
            changeTime.tv_nsec};
}

}  // namespace

FileType GetFileType(const std::string& path) {
    return StatusOfPath(path).type;
}

FileStatus StatusOfPath(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        return StatusFrom(status);
    }
    return TellsOfThePath(errno) ? FileStatus{} : FileStatus{.type = FileType::Unknown};
}

bool TellsOfThePath(int systemError) {
    switch (systemError) {
        case ENOENT:
        case ENOTDIR:
        case EACCES:
        case EPERM:
        case ELOOP:
        case ENAMETOOLONG:
            return true;
        default:
            return false;
    }
}

ResultCode JudgeLookError(const std::string& path, int systemError) {
    if (TellsOfThePath(systemError)) {
        return ResultCode::Ok;
    }
    Log(LogLevel::Error, "Could not look at '%s': %s.\n", path.c_str(), std::strerror(systemError));
    return ResultCode::SealkeeperIOError;
}

ResultCode LookAtPath(const std::string& path, FileStatus& status) {
    status = StatusOfPath(path);
    return status.type == FileType::Unknown ? JudgeLookError(path, errno) : ResultCode::Ok;
}

FileStatus StatusOfOpenFile(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 ? StatusFrom(status)
                                           : FileStatus{.type = FileType::Unknown};
}

std::optional<std::string> ResolvePath(const std::string& path) {
    const std::unique_ptr<char, MallocDeleter> resolved(realpath(path.c_str(), nullptr));
    if (!resolved) {
        return std::nullopt;
    }
    return std::string(resolved.get());
}

std::optional<std::string> FollowLinks(const std::string& path) {
    std::filesystem::path followed = path;
    for (int links = 0; links <= kMostLinks; ++links) {
        std::error_code error;
        const auto target = std::filesystem::read_symlink(followed, error);
        // Reading what is not a link fails with EINVAL.
        if (error == std::errc::invalid_argument || error == std::errc::no_such_file_or_directory) {
            return followed.string();
        }
        if (error) {
            return std::nullopt;
        }
        followed = followed.parent_path() / target;
    }
    return std::nullopt;
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
        // The check at the end tells whether this failure matters.
        static_cast<void>(mkdir(path.substr(0, end).c_str(), kDirectoryMode));
    }
    static_cast<void>(mkdir(path.c_str(), kDirectoryMode));
    return GetFileType(path) == FileType::Directory;
}

}  // namespace sealkeeper
