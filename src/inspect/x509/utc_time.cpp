#include "inspect/x509/utc_time.h"

#include <array>
#include <cstdio>

namespace sealkeeper {
namespace {

// The date, `between`, the time of day, and `end`.
std::string Written(UtcTime time, const char* between, const char* end) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::array<char, 64> text{};
    std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02u%s%02d:%02d:%02d%s", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), between,
        static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
        static_cast<int>(clock.seconds().count()), end);
    return text.data();
}

}  // namespace

std::optional<UtcTime> UtcTimeOf(const mbedtls_x509_time& time) {
    const std::chrono::year_month_day date(std::chrono::year(time.year),
                                           std::chrono::month(static_cast<unsigned>(time.mon)),
                                           std::chrono::day(static_cast<unsigned>(time.day)));
    if (!date.ok()) {
        return std::nullopt;
    }
    return std::chrono::sys_days(date) + std::chrono::hours(time.hour) +
           std::chrono::minutes(time.min) + std::chrono::seconds(time.sec);
}

std::string TimeText(UtcTime time) {
    return Written(time, " ", " UTC");
}

std::string IsoTimeText(UtcTime time) {
    return Written(time, "T", "Z");
}

std::int64_t DaysLeft(UtcTime end, UtcTime now) {
    return std::chrono::floor<std::chrono::days>(end - now).count();
}

}  // namespace sealkeeper
