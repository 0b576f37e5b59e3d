#include "inspect/show/unread_reason.h"

#include <system_error>

#include "platform/file_system.h"

namespace sealkeeper {

std::string UnreadReason(const std::string& path, int error) {
    const FileType type = GetFileType(path);
    if (type == FileType::Directory) {
        return "it is a directory";
    }
    if (type == FileType::Fifo) {
        return "it is a FIFO, which is not opened";
    }
    return error == 0 ? "it ended early" : std::generic_category().message(error);
}

std::string CannotBeRead(const std::string& path, int error) {
    return "cannot be read: " + UnreadReason(path, error);
}

}  // namespace sealkeeper
