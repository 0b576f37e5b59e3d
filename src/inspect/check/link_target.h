// Where symbolic links lead to.
#ifndef SEALKEEPER_INSPECT_CHECK_LINK_TARGET_H
#define SEALKEEPER_INSPECT_CHECK_LINK_TARGET_H

#include <string>

namespace sealkeeper {

// What the link at `path` holds; empty when it cannot be read.
[[nodiscard]] std::string LinkTarget(const std::string& path);

}  // namespace sealkeeper

#endif
