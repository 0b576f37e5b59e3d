// Finds out why a file could not be read, after code that does not say.
#ifndef SEALKEEPER_INSPECT_REPORT_UNREAD_REASON_H
#define SEALKEEPER_INSPECT_REPORT_UNREAD_REASON_H

#include <string>

namespace sealkeeper {

// The kind of the file at `path` if that is the reason, else why the system now refuses to read it,
// else the text of `systemError`: the errno of the attempt, or 0 if it is unknown. The file is not
// opened.
[[nodiscard]] std::string UnreadReason(const std::string& path, int systemError = 0);

// Why the system now refuses to read the directory at `path`.
[[nodiscard]] std::string UnreadDirectoryReason(const std::string& path);

// "cannot be read: " and that reason.
[[nodiscard]] std::string CannotBeRead(const std::string& path, int systemError = 0);

}  // namespace sealkeeper

#endif
