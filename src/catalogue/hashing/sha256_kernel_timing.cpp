#include "catalogue/hashing/sha256_kernel_timing.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace sealkeeper {
namespace {

using Clock = std::chrono::steady_clock;

// Long enough for a clock with ticks of up to 42 ns: one lane takes half a microsecond at 2 GB/s.
constexpr std::size_t kTimedBlocks = 16;

constexpr int kLeastTries = 2;
constexpr int kMostTries = 8;
constexpr std::chrono::microseconds kEnoughTime{350};

// The data of the timed calls. All bytes are zero, because the time does not depend on them.
struct TimedData {
    std::array<std::array<std::uint32_t, kSha256StateWords>, kMaxSha256Lanes> states{};
    std::array<std::uint8_t, kMaxSha256Lanes * kTimedBlocks * kSha256BlockBytes> blocks{};
    std::array<Sha256Lane, kMaxSha256Lanes> lanes{};

    // Not copied, because its lanes point into it.
    TimedData(const TimedData&) = delete;
    TimedData& operator=(const TimedData&) = delete;

    TimedData() {
        for (std::size_t lane = 0; lane < kMaxSha256Lanes; ++lane) {
            lanes[lane] = {states[lane].data(),
                           blocks.data() + lane * kTimedBlocks * kSha256BlockBytes};
        }
    }
};

std::uint64_t TimeCall(const Sha256Kernel& kernel, std::size_t laneCount, TimedData& data) {
    const Clock::time_point start = Clock::now();
    kernel.compress(data.lanes.data(), laneCount, kTimedBlocks);
    const std::chrono::nanoseconds time = Clock::now() - start;
    return static_cast<std::uint64_t>(time.count());
}

// Keeps the least time of each call, because disturbances only make calls longer.
void TryEachCall(TimedData& data, Sha256CallCosts& costs) {
    const Sha256Kernel& kernel = *costs.kernel;
    for (std::size_t laneCount = kernel.isWide ? kernel.maxLanes : 1; laneCount <= kernel.maxLanes;
         ++laneCount) {
        std::uint64_t& least = costs.ofLanes.at(laneCount);
        least = std::min(least, TimeCall(kernel, laneCount, data));
    }
}

void CopyCostOfAllLanes(Sha256CallCosts& costs) {
    const std::size_t maxLanes = costs.kernel->maxLanes;
    std::fill_n(costs.ofLanes.begin() + 1, maxLanes, costs.ofLanes.at(maxLanes));
}

}  // namespace

std::vector<Sha256CallCosts> TimeSha256Kernels(std::span<const Sha256Kernel* const> kernels) {
    TimedData data;
    std::vector<Sha256CallCosts> costs;
    for (const Sha256Kernel* kernel : kernels) {
        costs.push_back({kernel, {}});
        costs.back().ofLanes.fill(kNoSha256Cost);
    }
    const Clock::time_point start = Clock::now();
    for (int tries = 0; tries < kMostTries; ++tries) {
        if (tries >= kLeastTries && Clock::now() - start > kEnoughTime) {
            break;
        }
        for (Sha256CallCosts& ofKernel : costs) {
            TryEachCall(data, ofKernel);
        }
    }
    for (Sha256CallCosts& ofKernel : costs) {
        if (ofKernel.kernel->isWide) {
            CopyCostOfAllLanes(ofKernel);
        }
    }
    return costs;
}

}  // namespace sealkeeper
