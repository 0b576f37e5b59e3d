// Which kernels hash a number of lanes in the least time.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_PLAN_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_PLAN_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {

// The cost of more lanes than a kernel has.
inline constexpr std::uint64_t kNoSha256Cost = std::numeric_limits<std::uint64_t>::max();

struct Sha256CallCosts {
    const Sha256Kernel* kernel;
    // The cost of a call by its number of lanes, in the same unit for all kernels.
    std::array<std::uint64_t, kMaxSha256Lanes + 1> ofLanes;
};

struct Sha256PlannedCall {
    const Sha256Kernel* kernel;
    std::size_t laneCount;
};

// For each number of lanes, the first call to make. The lanes that are left are looked up in turn.
using Sha256Plan = std::array<Sha256PlannedCall, kMaxSha256Lanes + 1>;

// The plan of the lowest cost. Some kernel must have a cost for one lane. Ties go to the first
// kernel, then to the fewest lanes.
[[nodiscard]] Sha256Plan MakeSha256Plan(std::span<const Sha256CallCosts> costs);

}  // namespace sealkeeper

#endif
