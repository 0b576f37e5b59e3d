// Why a file could not be read.
#ifndef SEALKEEPER_INSPECT_SHOW_UNREAD_REASON_H
#define SEALKEEPER_INSPECT_SHOW_UNREAD_REASON_H

#include <string>

namespace sealkeeper {

// In the system's words for `error`, an errno, or what the file at `path` is, where that is the
// reason.
[[nodiscard]] std::string UnreadReason(const std::string& path, int error);

// The same as "cannot be read: " and the reason.
[[nodiscard]] std::string CannotBeRead(const std::string& path, int error);

}  // namespace sealkeeper

#endif
