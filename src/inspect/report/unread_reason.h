// Why a file could not be read, where whoever tried may only say that it could not.
#ifndef SEALKEEPER_INSPECT_REPORT_UNREAD_REASON_H
#define SEALKEEPER_INSPECT_REPORT_UNREAD_REASON_H

#include <string>

namespace sealkeeper {

// What the file at `path` is, where that is the reason; else the system's reason against reading
// it, as it is now; else that for `systemError`, the errno of the attempt, 0 where it is not known.
// The file is not opened.
[[nodiscard]] std::string UnreadReason(const std::string& path, int systemError = 0);

// The system's reason against reading the directory at `path`, as it is now.
[[nodiscard]] std::string UnreadDirectoryReason(const std::string& path);

// The same as "cannot be read: " and the reason.
[[nodiscard]] std::string CannotBeRead(const std::string& path, int systemError = 0);

}  // namespace sealkeeper

#endif
