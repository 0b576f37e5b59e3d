#include "inspect/credentials/warn_days.h"

#include <chrono>

namespace sealkeeper {

void AddWarnDaysOption(Command& command, std::uint64_t& warnDays) {
    constexpr std::uint64_t kMostDays = 36'525;
    command.AddNumber({"--warn-days", "N", "Warn of what expires within N days"}, kMostDays,
                      warnDays);
}

JudgingTime JudgingTimeNow(std::uint64_t warnDays) {
    return {std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()),
            static_cast<std::int64_t>(warnDays)};
}

}  // namespace sealkeeper
