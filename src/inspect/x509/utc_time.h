// Points in time as certificates have them, and the days to them.
#ifndef SEALKEEPER_INSPECT_X509_UTC_TIME_H
#define SEALKEEPER_INSPECT_X509_UTC_TIME_H

#include <mbedtls/x509.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace sealkeeper {

using UtcTime = std::chrono::sys_seconds;

// Nothing for the time that the library leaves where an optional one is missing.
[[nodiscard]] std::optional<UtcTime> UtcTimeOf(const mbedtls_x509_time& time);

// "2026-01-31 13:45:00 UTC".
[[nodiscard]] std::string TimeText(UtcTime time);

// "2026-01-31T13:45:00Z" (ISO 8601).
[[nodiscard]] std::string IsoTimeText(UtcTime time);

// The whole days from `now` to `end`: 0 on the last day, negative after the end.
[[nodiscard]] std::int64_t DaysLeft(UtcTime end, UtcTime now);

// The certificate and the list are good up to and including the second that they name.
[[nodiscard]] inline bool IsPast(UtcTime end, UtcTime now) {
    return now > end;
}

}  // namespace sealkeeper

#endif
