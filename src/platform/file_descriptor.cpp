#include "platform/file_descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <deque>

#include "platform/file_system.h"

namespace sealkeeper {

FileDescriptor::~FileDescriptor() {
    if (IsOpen()) {
        close(descriptor_);
    }
}

bool FileDescriptor::OpenForReading(const std::string& path) {
    constexpr int kFlags = O_RDONLY | O_CLOEXEC;
    // Non-blocking: to open a FIFO would wait for a writer.
    descriptor_ = open(path.c_str(), kFlags | O_NONBLOCK);
    // A file under a lease, as network file servers hand them out, is there for those who wait
    // until its holder gives it up.
    if (!IsOpen() && errno == EWOULDBLOCK && GetFileType(path) == FileType::Regular) {
        descriptor_ = open(path.c_str(), kFlags);
        hasWaited_ = IsOpen();
    }
    return IsOpen();
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
