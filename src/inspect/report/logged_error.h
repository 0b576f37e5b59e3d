// Errors that the tool's own code logs, kept for reports. That code logs where it finds a failure,
// which is where most is known of it.
#ifndef SEALKEEPER_INSPECT_REPORT_LOGGED_ERROR_H
#define SEALKEEPER_INSPECT_REPORT_LOGGED_ERROR_H

#include <string>

namespace sealkeeper {

// Has the tool's own code tell its messages to the functions below alone.
void KeepLogQuiet();

// The last message that tells of an error, without its line feed; empty when there was none.
[[nodiscard]] const std::string& LastLoggedError();

// The first one since they were forgotten: what was found first may be the cause of the others.
[[nodiscard]] const std::string& FirstLoggedError();

// Forgets both, so that the next one is known to be of what comes next.
void ForgetLoggedError();

}  // namespace sealkeeper

#endif
