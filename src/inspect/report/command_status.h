// Exit statuses shared by the commands of sealkeeper-inspect.
#ifndef SEALKEEPER_INSPECT_REPORT_COMMAND_STATUS_H
#define SEALKEEPER_INSPECT_REPORT_COMMAND_STATUS_H

namespace sealkeeper {

// Nothing to report.
inline constexpr int kStatusGood = 0;
// It works, but there are warnings to look at.
inline constexpr int kStatusWarning = 1;
// It does not work, or it could not be examined.
inline constexpr int kStatusError = 2;
// The command line is wrong: EX_USAGE of sysexits(3), which no command returns.
inline constexpr int kUsageStatus = 64;

}  // namespace sealkeeper

#endif
