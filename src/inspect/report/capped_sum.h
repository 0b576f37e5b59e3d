// Adds sizes that come from untrusted input.
#ifndef SEALKEEPER_INSPECT_REPORT_CAPPED_SUM_H
#define SEALKEEPER_INSPECT_REPORT_CAPPED_SUM_H

#include <cstdint>
#include <limits>

namespace sealkeeper {

// The sum of `a` and `b`, or the largest value if it would overflow.
[[nodiscard]] constexpr std::uint64_t CappedSum(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
    return b > kLargest - a ? kLargest : a + b;
}

}  // namespace sealkeeper

#endif
