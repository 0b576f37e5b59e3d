#include "inspect/check/unreadable_reason.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace sealkeeper {

std::string UnreadableDirectoryReason(const std::string& path) {
    return access(path.c_str(), R_OK) == 0 ? "unknown reason" : std::strerror(errno);
}

}  // namespace sealkeeper
