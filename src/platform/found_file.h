// A file of the game on its way from the walk to its hash.
#ifndef SEALKEEPER_PLATFORM_FOUND_FILE_H
#define SEALKEEPER_PLATFORM_FOUND_FILE_H

#include <string>

#include "platform/file_system.h"

namespace sealkeeper {

struct FoundFile {
    std::wstring path;
    // What was seen of it when it was found; `Missing` where nobody looked.
    FileStatus status;
};

}  // namespace sealkeeper

#endif
