#include "inspect/rules/no_utf8_names.h"

#include <unistd.h>

#include "inspect/tree/access_right.h"

namespace sealkeeper {
namespace {

Refusal RefusalWith(ResultCode code, const char* what) {
    return {code, std::string("'") + kNoUtf8StandIn +
                      "', which is read in place of a name that is not UTF-8, " + what + "."};
}

}  // namespace

ResultCode LookAtStandIn(StandIn& standIn) {
    standIn = StandIn();
    FileStatus status;
    if (const ResultCode code = LookAtPath(kNoUtf8StandIn, status); code != ResultCode::Ok) {
        return code;
    }
    standIn.type = status.type;
    if (status.sizeBytes <= 0) {
        return ResultCode::Ok;
    }
    bool isLocked = false;
    if (const ResultCode code = AskForRight(kNoUtf8StandIn, R_OK, isLocked);
        code != ResultCode::Ok) {
        return code;
    }
    if (isLocked) {
        standIn.refusal = RefusalWith(ResultCode::CatalogueError, "cannot be read by this user");
    } else if (status.type == FileType::Directory) {
        // It has a size and can be opened, but has no bytes to read.
        standIn.refusal = RefusalWith(ResultCode::CatalogueIOError, "is a directory");
    }
    return ResultCode::Ok;
}

}  // namespace sealkeeper
