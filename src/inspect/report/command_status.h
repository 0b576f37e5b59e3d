// Exit statuses that commands of sealkeeper-inspect share.
#ifndef SEALKEEPER_INSPECT_REPORT_COMMAND_STATUS_H
#define SEALKEEPER_INSPECT_REPORT_COMMAND_STATUS_H

namespace sealkeeper {

// Nothing to say.
inline constexpr int kStatusGood = 0;
// What was looked at works, but somebody should look at a warning.
inline constexpr int kStatusWarning = 1;
// It does not work, or it could not be looked at.
inline constexpr int kStatusError = 2;
// The command line says no command: EX_USAGE of sysexits(3), no status of any command.
inline constexpr int kUsageStatus = 64;

}  // namespace sealkeeper

#endif
