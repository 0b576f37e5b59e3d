#include "inspect/report/unread_reason.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/file_system.h"

namespace sealkeeper {
namespace {

std::string SystemReason(const std::string& path, int systemError) {
    if (access(path.c_str(), R_OK) != 0) {
        return std::strerror(errno);
    }
    return systemError != 0 ? std::strerror(systemError) : "the system failed to read it";
}

}  // namespace

std::string UnreadReason(const std::string& path, int systemError) {
    switch (GetFileType(path)) {
        case FileType::Directory:
            return "it is a directory";
        case FileType::Fifo:
            return "it is a FIFO, which is not opened";
        case FileType::Socket:
            return "it is a socket";
        case FileType::Missing:
        case FileType::Unknown:
        case FileType::Regular:
        case FileType::Other:
            break;
    }
    return SystemReason(path, systemError);
}

std::string UnreadDirectoryReason(const std::string& path) {
    return SystemReason(path, 0);
}

std::string CannotBeRead(const std::string& path, int systemError) {
    return "cannot be read: " + UnreadReason(path, systemError);
}

}  // namespace sealkeeper
