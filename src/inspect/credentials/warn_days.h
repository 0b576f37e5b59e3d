// The option `--warn-days` of the commands that check dates.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_WARN_DAYS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_WARN_DAYS_H

#include <cstdint>

#include "inspect/command_line/command_line.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

inline constexpr std::uint64_t kDefaultWarnDays = 30;

// Adds the option to `command`. It sets `warnDays`, at most a hundred years.
void AddWarnDaysOption(Command& command, std::uint64_t& warnDays);

// The current time and the value of the option.
[[nodiscard]] JudgingTime JudgingTimeNow(std::uint64_t warnDays);

}  // namespace sealkeeper

#endif
