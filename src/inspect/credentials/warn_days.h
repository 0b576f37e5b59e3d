// The option `--warn-days` of the commands that look at dates.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_WARN_DAYS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_WARN_DAYS_H

#include <cstdint>

namespace CLI {
class App;
}

namespace sealkeeper {

inline constexpr std::int64_t kDefaultWarnDays = 30;

// Adds the option to `command`. It sets `warnDays`, from 0 to a hundred years.
void AddWarnDaysOption(CLI::App& command, std::int64_t& warnDays);

}  // namespace sealkeeper

#endif
