#include "inspect/tree/access_right.h"

#include <unistd.h>

#include <cerrno>

#include "platform/file_system.h"

namespace sealkeeper {

ResultCode AskForRight(const std::string& path, int right, bool& isForbidden) {
    if (access(path.c_str(), right) == 0) {
        isForbidden = false;
        return ResultCode::Ok;
    }
    isForbidden = errno == EACCES || errno == EPERM;
    return JudgeLookError(path, errno);
}

}  // namespace sealkeeper
