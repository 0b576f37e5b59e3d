// Asks for the rights of this user.
#ifndef SEALKEEPER_INSPECT_TREE_ACCESS_RIGHT_H
#define SEALKEEPER_INSPECT_TREE_ACCESS_RIGHT_H

#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// Sets `isForbidden` to whether something is at `path` to which this user lacks the right `right`:
// R_OK, X_OK or both, of POSIX `access`. Fails as `JudgeLookError` does.
ResultCode AskForRight(const std::string& path, int right, bool& isForbidden);

}  // namespace sealkeeper

#endif
