// Reads symbolic links.
#ifndef SEALKEEPER_INSPECT_CHECK_LINK_TARGET_H
#define SEALKEEPER_INSPECT_CHECK_LINK_TARGET_H

#include <string>

namespace sealkeeper {

// The text of the link at `path`; empty if it cannot be read.
[[nodiscard]] std::string LinkTarget(const std::string& path);

}  // namespace sealkeeper

#endif
