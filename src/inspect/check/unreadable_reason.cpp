#include "inspect/check/unreadable_reason.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/file_system.h"

namespace sealkeeper {
namespace {

std::string AccessReason(const std::string& path) {
    return access(path.c_str(), R_OK) == 0 ? "unknown reason" : std::strerror(errno);
}

}  // namespace

std::string UnreadableFileReason(const std::string& path) {
    switch (GetFileType(path)) {
        case FileType::Missing:
        case FileType::Unknown:
        case FileType::Regular:
            return AccessReason(path);
        case FileType::Directory:
            return std::strerror(EISDIR);
        case FileType::Fifo:
        case FileType::Socket:
        case FileType::Other:
            break;
    }
    return "not a regular file";
}

std::string UnreadableDirectoryReason(const std::string& path) {
    return AccessReason(path);
}

}  // namespace sealkeeper
