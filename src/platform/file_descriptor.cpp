#include "platform/file_descriptor.h"

#include <fcntl.h>
#include <unistd.h>

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

}  // namespace sealkeeper
