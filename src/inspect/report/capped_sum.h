// Sums of sizes that somebody else claims.
#ifndef SEALKEEPER_INSPECT_REPORT_CAPPED_SUM_H
#define SEALKEEPER_INSPECT_REPORT_CAPPED_SUM_H

#include <cstdint>
#include <limits>

namespace sealkeeper {

// `a` and `b`, but at most what the type holds.
[[nodiscard]] constexpr std::uint64_t CappedSum(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
    return b > kLargest - a ? kLargest : a + b;
}

}  // namespace sealkeeper

#endif
