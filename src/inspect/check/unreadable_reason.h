// Why a directory could not be read, where whoever tried only said that it could not.
#ifndef SEALKEEPER_INSPECT_CHECK_UNREADABLE_REASON_H
#define SEALKEEPER_INSPECT_CHECK_UNREADABLE_REASON_H

#include <string>

namespace sealkeeper {

// The system's reason against reading the directory at `path`, as it is now; "unknown reason" when
// it has none any more.
[[nodiscard]] std::string UnreadableDirectoryReason(const std::string& path);

}  // namespace sealkeeper

#endif
