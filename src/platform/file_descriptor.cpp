#include "platform/file_descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <deque>

namespace sealkeeper {

FileDescriptor::~FileDescriptor() {
    if (IsOpen()) {
        close(descriptor_);
    }
}

bool FileDescriptor::OpenForReading(const std::string& path) {
    // Non-blocking, which regular files know nothing of: to open a FIFO would wait for a writer.
    descriptor_ = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
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
