// Fields of certificates and lists in text reports.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_DETAIL_TEXT_H
#define SEALKEEPER_INSPECT_CREDENTIALS_DETAIL_TEXT_H

#include <string>

#include "inspect/x509/certificate_details.h"

namespace sealkeeper {

// "RSA, 2048 bits".
[[nodiscard]] std::string KeyText(const KeyDetails& key);

// "3,649 days left", "less than a day left", "ended 12 days ago", "ended less than a day ago".
[[nodiscard]] std::string DaysLeftText(UtcTime end, UtcTime now);

// "2026-01-01 00:00:00 UTC to 2036-01-01 00:00:00 UTC, 3,649 days left".
[[nodiscard]] std::string SpanText(UtcTime from, UtcTime to, UtcTime now);

// As above for a list, up to its next update.
[[nodiscard]] std::string ListSpanText(const ListDetails& list, UtcTime now);

// "2 serials: 0DEAD001, 0DEAD002"; only the first few of many.
[[nodiscard]] std::string RevokedText(const ListDetails& list);

}  // namespace sealkeeper

#endif
