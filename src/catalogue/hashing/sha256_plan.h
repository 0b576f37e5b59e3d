// Which kernels take in a number of lanes in the least time.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_PLAN_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_PLAN_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {

// Of more lanes than a kernel takes.
inline constexpr std::uint64_t kNoSha256Cost = std::numeric_limits<std::uint64_t>::max();

struct Sha256CallCosts {
    const Sha256Kernel* kernel;
    // What a call costs, by its number of lanes, in a unit that is the same for all kernels.
    std::array<std::uint64_t, kMaxSha256Lanes + 1> ofLanes;
};

struct Sha256PlannedCall {
    const Sha256Kernel* kernel;
    std::size_t laneCount;
};

// For each number of lanes the call that comes first; the lanes that it leaves are a smaller number
// of lanes.
using Sha256Plan = std::array<Sha256PlannedCall, kMaxSha256Lanes + 1>;

// The plan of the lowest cost, where some kernel has a cost for one lane. Of calls that come to the
// same, the one of the first kernel and of the fewest lanes.
[[nodiscard]] Sha256Plan MakeSha256Plan(std::span<const Sha256CallCosts> costs);

}  // namespace sealkeeper

#endif
