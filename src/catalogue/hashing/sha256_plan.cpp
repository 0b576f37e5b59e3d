#include "catalogue/hashing/sha256_plan.h"

namespace sealkeeper {
namespace {

using LowestCosts = std::array<std::uint64_t, kMaxSha256Lanes + 1>;

// Finds the first of the calls for `lanes` that cost least together, and adds what they cost to
// `lowest`, which has the costs of all fewer lanes.
Sha256PlannedCall FirstOfCheapest(std::size_t lanes, std::span<const Sha256CallCosts> costs,
                                  LowestCosts& lowest) {
    Sha256PlannedCall first{};
    lowest[lanes] = kNoSha256Cost;
    for (const Sha256CallCosts& ofKernel : costs) {
        for (std::size_t taken = 1; taken <= lanes; ++taken) {
            const std::uint64_t cost = ofKernel.ofLanes[taken];
            const std::uint64_t rest = lowest[lanes - taken];
            if (cost < kNoSha256Cost - rest && cost + rest < lowest[lanes]) {
                lowest[lanes] = cost + rest;
                first = {ofKernel.kernel, taken};
            }
        }
    }
    return first;
}

}  // namespace

Sha256Plan MakeSha256Plan(std::span<const Sha256CallCosts> costs) {
    Sha256Plan plan{};
    LowestCosts lowest{};
    for (std::size_t lanes = 1; lanes <= kMaxSha256Lanes; ++lanes) {
        plan[lanes] = FirstOfCheapest(lanes, costs, lowest);
    }
    return plan;
}

}  // namespace sealkeeper
