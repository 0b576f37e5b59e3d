// A file of the game that the walk has found and that is yet to be hashed.
#ifndef SEALKEEPER_PLATFORM_FOUND_FILE_H
#define SEALKEEPER_PLATFORM_FOUND_FILE_H

#include <string>

#include "platform/file_system.h"

namespace sealkeeper {

struct FoundFile {
    std::wstring path;
    // Its status when it was found; `Missing` if nobody looked.
    FileStatus status;
};

}  // namespace sealkeeper

#endif
