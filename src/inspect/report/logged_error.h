// Keeps the errors that the tool's own code logs, for use in reports. That code logs a failure
// where it is found, with the most detail.
#ifndef SEALKEEPER_INSPECT_REPORT_LOGGED_ERROR_H
#define SEALKEEPER_INSPECT_REPORT_LOGGED_ERROR_H

#include <string>
#include <string_view>

namespace sealkeeper {

// Redirects the log: its messages go only to the functions below.
void KeepLogQuiet();

// The last logged error, without its line feed; empty if there is none.
[[nodiscard]] const std::string& LastLoggedError();

// The first error since `ForgetLoggedError`. It may have caused the later ones.
[[nodiscard]] const std::string& FirstLoggedError();

// Forgets both, so that the next error is known to be new.
void ForgetLoggedError();

// `message` as the functions above return it.
[[nodiscard]] std::string WithoutLineFeed(std::string_view message);

}  // namespace sealkeeper

#endif
