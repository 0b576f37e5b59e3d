#include "platform/file_descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <deque>

#include "platform/file_system.h"

namespace sealkeeper {
namespace {

// Some systems refuse to write 2^31 bytes or more at once.
constexpr std::size_t kMostBytesAtOnce = std::size_t{1} << 30;

int FlushToDisk(int descriptor) {
#if defined(F_FULLFSYNC)
    // On systems that define it, fsync may leave bytes in the disk's cache. Not every file system
    // supports it.
    const int result = fcntl(descriptor, F_FULLFSYNC);
    if (result == 0 || (errno != ENOTSUP && errno != EINVAL && errno != ENOTTY)) {
        return result;
    }
#endif
    return fsync(descriptor);
}

}  // namespace

FileDescriptor::~FileDescriptor() {
    if (IsOpen()) {
        close(descriptor_);
    }
}

bool FileDescriptor::Open(const std::string& path, int flags, mode_t mode) {
    descriptor_ = open(path.c_str(), flags | O_CLOEXEC, mode);
    return IsOpen();
}

// Without O_NONBLOCK, opening a FIFO would wait for its other end.
bool FileDescriptor::OpenWithoutWaiting(const std::string& path, int flags) {
    // A file under a lease, as network file servers take them, cannot be opened without waiting for
    // the holder to give it up.
    if (!Open(path, flags | O_NONBLOCK) && errno == EWOULDBLOCK &&
        GetFileType(path) == FileType::Regular) {
        hasWaited_ = Open(path, flags);
    }
    return IsOpen();
}

bool FileDescriptor::OpenForReading(const std::string& path) {
    return OpenWithoutWaiting(path, O_RDONLY);
}

bool FileDescriptor::OpenForWriting(const std::string& path) {
    if (!OpenWithoutWaiting(path, O_WRONLY)) {
        return false;
    }
    // Writing must wait for a slow reader.
    const int flags = fcntl(descriptor_, F_GETFL);
    return flags >= 0 && fcntl(descriptor_, F_SETFL, flags & ~O_NONBLOCK) == 0;
}

bool FileDescriptor::OpenTruncated(const std::string& path, mode_t mode) {
    return Open(path, O_WRONLY | O_CREAT | O_TRUNC, mode);
}

bool FileDescriptor::Create(const std::string& path, mode_t mode) {
    return Open(path, O_WRONLY | O_CREAT | O_EXCL, mode);
}

bool FileDescriptor::Write(std::span<const std::uint8_t> bytes) const {
    while (!bytes.empty()) {
        const ssize_t written =
            write(descriptor_, bytes.data(), std::min(bytes.size(), kMostBytesAtOnce));
        if (written > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool FileDescriptor::Synchronise() const {
    int result = FlushToDisk(descriptor_);
    while (result != 0 && errno == EINTR) {
        result = FlushToDisk(descriptor_);
    }
    return result == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
}

bool FileDescriptor::Close() {
    const bool closed = close(descriptor_) == 0;
    // Not retried: after a failure it may be closed, and another file may have its number by now.
    Release();
    return closed;
}

bool FileDescriptor::Duplicate(int descriptor) {
    descriptor_ = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    return IsOpen();
}

std::size_t CountFreeDescriptors(std::size_t most) {
    std::deque<FileDescriptor> opened;
    while (opened.size() < most) {
        if (!opened.emplace_back().Duplicate(STDIN_FILENO)) {
            return opened.size() - 1;
        }
    }
    return most;
}

}  // namespace sealkeeper
