#include "catalogue/hashing/sha256_plan.h"

namespace sealkeeper {

Sha256Plan MakeSha256Plan(std::span<const Sha256CallCosts> costs) {
    Sha256Plan plan{};
    std::array<std::uint64_t, kMaxSha256Lanes + 1> lowest{};
    for (std::size_t lanes = 1; lanes <= kMaxSha256Lanes; ++lanes) {
        lowest[lanes] = kNoSha256Cost;
        for (const Sha256CallCosts& ofKernel : costs) {
            for (std::size_t taken = 1; taken <= lanes; ++taken) {
                const std::uint64_t cost = ofKernel.ofLanes[taken];
                const std::uint64_t rest = lowest[lanes - taken];
                if (cost < kNoSha256Cost - rest && cost + rest < lowest[lanes]) {
                    lowest[lanes] = cost + rest;
                    plan[lanes] = {ofKernel.kernel, taken};
                }
            }
        }
    }
    return plan;
}

}  // namespace sealkeeper
