#include "inspect/credentials/warn_days.h"

#include <CLI/CLI.hpp>

namespace sealkeeper {

void AddWarnDaysOption(CLI::App& command, std::int64_t& warnDays) {
    constexpr std::int64_t kMostDays = 36'525;
    command.add_option("--warn-days", warnDays, "Warn of what expires within N days")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(std::int64_t{0}, kMostDays));
}

}  // namespace sealkeeper
