// Points in time as in certificates, and how far away they are.
#ifndef SEALKEEPER_INSPECT_X509_UTC_TIME_H
#define SEALKEEPER_INSPECT_X509_UTC_TIME_H

#include <mbedtls/x509.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace sealkeeper {

using UtcTime = std::chrono::sys_seconds;

// Empty for the zero time with which the library marks a missing optional one.
[[nodiscard]] std::optional<UtcTime> UtcTimeOf(const mbedtls_x509_time& time);

// "2026-01-31 13:45:00 UTC".
[[nodiscard]] std::string TimeText(UtcTime time);

// "2026-01-31T13:45:00Z" (ISO 8601).
[[nodiscard]] std::string IsoTimeText(UtcTime time);

// Whole days from `now` to `end`: 0 on the last day, negative after `end`.
[[nodiscard]] std::int64_t DaysLeft(UtcTime end, UtcTime now);

// Certificates and lists are valid up to and including the second they name.
[[nodiscard]] inline bool IsPast(UtcTime end, UtcTime now) {
    return now > end;
}

}  // namespace sealkeeper

#endif
