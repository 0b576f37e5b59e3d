#include "inspect/rules/no_utf8_names.h"

#include <unistd.h>

#include "platform/file_system.h"

namespace sealkeeper {
namespace {

Refusal RefusalWith(ResultCode code, const char* what) {
    return {code, std::string("'") + kNoUtf8StandIn +
                      "', which is read in place of a name that is no UTF-8, " + what + "."};
}

}  // namespace

std::optional<Refusal> RefusalOfStandIn() {
    const FileStatus status = StatusOfPath(kNoUtf8StandIn);
    if (status.sizeBytes <= 0) {
        return std::nullopt;
    }
    if (access(kNoUtf8StandIn, R_OK) != 0) {
        return RefusalWith(ResultCode::CatalogueError, "cannot be read by this user");
    }
    // A directory has a size and can be opened, but has no bytes to read.
    return status.type == FileType::Directory
               ? std::optional(RefusalWith(ResultCode::CatalogueIOError, "is a directory"))
               : std::nullopt;
}

}  // namespace sealkeeper
