#include "catalogue/sha256_kernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/sha256_streams.h"

// Architectures without a kernel have nothing to test here.
#if defined(__x86_64__) || defined(__aarch64__)

namespace sealkeeper {
namespace {

#if defined(__x86_64__)
const Sha256Kernel& kernel = kX86Sha256Kernel;
#else
const Sha256Kernel& kernel = kArmSha256Kernel;
#endif

// The parameter is the number of streams.
class Sha256KernelTest : public testing::TestWithParam<std::size_t> {
  protected:
    void SetUp() override {
        if (!kernel.isSupported()) {
            GTEST_SKIP() << "this processor does not have the instructions: " << kernel.name;
        }
    }
};

TEST_P(Sha256KernelTest, WritesTheStatesAlone) {
    constexpr std::uint32_t kGuard = 0xA5C3F00D;
    constexpr std::size_t kGuardWords = 8;
    constexpr std::size_t kBlocks = 3;
    using GuardedState = std::array<std::uint32_t, kGuardWords + kSha256StateWords + kGuardWords>;
    std::array<GuardedState, kMaxSha256Streams> states{};
    std::array<Sha256Lane, kMaxSha256Streams> lanes{};
    const auto message = test::BytesOf(test::PatternText(kBlocks * kSha256BlockBytes));
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        states[lane].fill(kGuard);
        lanes[lane] = {states[lane].data() + kGuardWords, message.data()};
    }

    kernel.compress(lanes.data(), GetParam(), kBlocks);

    const auto isGuard = [](std::uint32_t word) { return word == kGuard; };
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        SCOPED_TRACE("lane " + std::to_string(lane));
        const std::span<const std::uint32_t> words = states[lane];
        const auto before = words.first(kGuardWords);
        const auto state = words.subspan(kGuardWords, kSha256StateWords);
        const auto behind = words.last(kGuardWords);
        EXPECT_TRUE(std::all_of(before.begin(), before.end(), isGuard));
        EXPECT_TRUE(std::all_of(behind.begin(), behind.end(), isGuard));
        EXPECT_EQ(std::none_of(state.begin(), state.end(), isGuard), lane < GetParam());
        EXPECT_EQ(std::all_of(state.begin(), state.end(), isGuard), lane >= GetParam());
    }
}

TEST_P(Sha256KernelTest, KeepsTheStatesWithoutBlocks) {
    constexpr std::uint32_t kAnyWord = 0x01234567;
    std::array<std::array<std::uint32_t, kSha256StateWords>, kMaxSha256Streams> states{};
    std::array<Sha256Lane, kMaxSha256Streams> lanes{};
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        states[lane].fill(kAnyWord);
        lanes[lane] = {states[lane].data(), nullptr};
    }
    const auto before = states;

    kernel.compress(lanes.data(), GetParam(), 0);

    EXPECT_EQ(states, before);
}

TEST_P(Sha256KernelTest, IsUsable) {
    EXPECT_TRUE(IsUsable(kernel));
}

// Kernels are functions without state, so what breaks this one is set from outside.
std::size_t brokenStreamCount = 0;

void CompressWithABrokenStreamCount(const Sha256Lane* lanes, std::size_t laneCount,
                                    std::size_t blockCount) {
    kernel.compress(lanes, laneCount, blockCount);
    if (laneCount == brokenStreamCount) {
        lanes[laneCount - 1].state[kSha256StateWords - 1] ^= 1U;
    }
}

TEST_P(Sha256KernelTest, IsNotUsableWhenItGivesAWrongAnswer) {
    const Sha256Kernel broken{"broken", kernel.isSupported, CompressWithABrokenStreamCount};
    brokenStreamCount = 0;
    EXPECT_TRUE(IsUsable(broken));
    brokenStreamCount = GetParam();
    EXPECT_FALSE(IsUsable(broken));
}

TEST_P(Sha256KernelTest, IsNotUsableOnAProcessorWithoutTheInstructions) {
    const Sha256Kernel unsupported{"unsupported", [] { return false; }, kernel.compress};
    EXPECT_FALSE(IsUsable(unsupported));
}

INSTANTIATE_TEST_SUITE_P(EveryNumberOfStreams, Sha256KernelTest,
                         testing::Range<std::size_t>(1, kMaxSha256Streams + 1));

}  // namespace
}  // namespace sealkeeper

#endif
