#include "catalogue/hashing/sha256_kernel_timing.h"

#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <vector>

namespace sealkeeper {
namespace {

bool Supported() {
    return true;
}

std::array<std::size_t, kMaxSha256Lanes + 1> callsByLanes{};

void CountCall(const Sha256Lane*, std::size_t laneCount, std::size_t) {
    ++callsByLanes.at(laneCount);
}

// The kernels take no time, so each is measured equally often.
constexpr Sha256Kernel kNarrow = {"narrow", 3, Supported, CountCall};
constexpr Sha256Kernel kWide = {"wide", 8, Supported, CountCall, true};

std::vector<Sha256CallCosts> CostsOf(const Sha256Kernel& kernel) {
    callsByLanes.fill(0);
    const Sha256Kernel* const kernels[] = {&kernel};
    return TimeSha256Kernels(kernels);
}

TEST(Sha256KernelTiming, TriesANarrowKernelForEveryNumberOfLanes) {
    const auto costs = CostsOf(kNarrow);
    ASSERT_EQ(costs.size(), 1U);
    EXPECT_EQ(costs[0].kernel, &kNarrow);
    for (std::size_t lanes = 0; lanes <= kMaxSha256Lanes; ++lanes) {
        const bool isTaken = lanes >= 1 && lanes <= kNarrow.maxLanes;
        EXPECT_EQ(costs[0].ofLanes.at(lanes) != kNoSha256Cost, isTaken) << lanes;
        EXPECT_EQ(callsByLanes.at(lanes) >= 2, isTaken) << lanes;
    }
}

TEST(Sha256KernelTiming, TriesAWideKernelWithAllItsLanesAlone) {
    const auto costs = CostsOf(kWide);
    ASSERT_EQ(costs.size(), 1U);
    EXPECT_GE(callsByLanes.at(kWide.maxLanes), 2U);
    EXPECT_EQ(std::accumulate(callsByLanes.begin(), callsByLanes.end(), std::size_t{0}),
              callsByLanes.at(kWide.maxLanes));
    EXPECT_NE(costs[0].ofLanes.at(1), kNoSha256Cost);
    for (std::size_t lanes = 0; lanes <= kMaxSha256Lanes; ++lanes) {
        const bool isTaken = lanes >= 1 && lanes <= kWide.maxLanes;
        EXPECT_EQ(costs[0].ofLanes.at(lanes), isTaken ? costs[0].ofLanes[1] : kNoSha256Cost)
            << lanes;
    }
}

}  // namespace
}  // namespace sealkeeper
