#include "catalogue/hashing/sha256_kernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/hashing/sha256_streams.h"

namespace sealkeeper {
namespace {

// Where there is none, everything here is skipped.
const Sha256Kernel& Kernel() {
    return *CompiledSha256Kernel();
}

class CompiledSha256KernelTest : public testing::Test {
  protected:
    void SetUp() override {
        if (CompiledSha256Kernel() == nullptr) {
            GTEST_SKIP() << "there is no kernel for what this build targets";
        }
        if (!Kernel().isSupported()) {
            GTEST_SKIP() << "this processor does not have the instructions: " << Kernel().name;
        }
    }
};

// The parameter is the number of streams.
class Sha256KernelTest : public CompiledSha256KernelTest,
                         public testing::WithParamInterface<std::size_t> {};

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

    Kernel().compress(lanes.data(), GetParam(), kBlocks);

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

    Kernel().compress(lanes.data(), GetParam(), 0);

    EXPECT_EQ(states, before);
}

TEST_F(CompiledSha256KernelTest, DoesNothingWithoutLanes) {
    constexpr std::uint32_t kAnyWord = 0x01234567;
    const std::array<std::uint8_t, kSha256BlockBytes> block{};
    std::array<std::array<std::uint32_t, kSha256StateWords>, kMaxSha256Streams> states{};
    std::array<Sha256Lane, kMaxSha256Streams> lanes{};
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        states[lane].fill(kAnyWord);
        lanes[lane] = {states[lane].data(), block.data()};
    }
    const auto before = states;

    Kernel().compress(lanes.data(), 0, 1);

    EXPECT_EQ(states, before);
}

TEST_F(CompiledSha256KernelTest, IsUsable) {
    EXPECT_TRUE(IsUsable(Kernel()));
}

TEST_F(CompiledSha256KernelTest, IsNotUsableOnAProcessorWithoutTheInstructions) {
    const Sha256Kernel unsupported{"unsupported", [] { return false; }, Kernel().compress};
    EXPECT_FALSE(IsUsable(unsupported));
}

using Compress = decltype(Sha256Kernel::compress);

struct Fault {
    const char* description;
    // With fewer there is no fault.
    std::size_t leastLanes;
    Compress compress;
};

void SwapFirstAndLastState(const Sha256Lane* lanes, std::size_t laneCount) {
    std::uint32_t* const first = lanes[0].state;
    std::swap_ranges(first, first + kSha256StateWords, lanes[laneCount - 1].state);
}

constexpr std::array kFaults = {
    Fault{"a bit of the last lane's state is wrong", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              Kernel().compress(lanes, laneCount, blockCount);
              lanes[laneCount - 1].state[kSha256StateWords - 1] ^= 1U;
          }},
    Fault{"the first block of a call is taken for all of its blocks", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              for (std::size_t block = 0; block < blockCount; ++block) {
                  Kernel().compress(lanes, laneCount, 1);
              }
          }},
    Fault{"the first block of a call is the only one that is taken", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              Kernel().compress(lanes, laneCount, std::min<std::size_t>(blockCount, 1));
          }},
    Fault{"a third block is not taken", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              Kernel().compress(lanes, laneCount, std::min<std::size_t>(blockCount, 2));
          }},
    Fault{"two lanes begin with each other's state", 2,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              SwapFirstAndLastState(lanes, laneCount);
              Kernel().compress(lanes, laneCount, blockCount);
          }},
    Fault{"two lanes end with each other's state", 2,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              Kernel().compress(lanes, laneCount, blockCount);
              SwapFirstAndLastState(lanes, laneCount);
          }},
    Fault{"the last lane takes the blocks of the first", 2,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              std::array<Sha256Lane, kMaxSha256Streams> wrong{};
              std::copy_n(lanes, laneCount, wrong.begin());
              wrong[laneCount - 1].blocks = wrong[0].blocks;
              Kernel().compress(wrong.data(), laneCount, blockCount);
          }},
    Fault{"the last lane is ignored", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              Kernel().compress(lanes, laneCount - 1, blockCount);
          }},
};

// Kernels are functions without state, so what is wrong with this one is set from outside.
Compress faultyCompress = nullptr;
std::size_t faultyLaneCount = 0;

void CompressWithFault(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
    const bool isFaulty = laneCount == faultyLaneCount;
    (isFaulty ? faultyCompress : Kernel().compress)(lanes, laneCount, blockCount);
}

TEST_P(Sha256KernelTest, IsNotUsableWithAFaultAtOneNumberOfStreams) {
    const Sha256Kernel faulty{"faulty", Kernel().isSupported, CompressWithFault};
    faultyLaneCount = 0;
    ASSERT_TRUE(IsUsable(faulty));
    faultyLaneCount = GetParam();
    for (const Fault& fault : kFaults) {
        if (GetParam() >= fault.leastLanes) {
            faultyCompress = fault.compress;
            EXPECT_FALSE(IsUsable(faulty)) << fault.description;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryNumberOfStreams, Sha256KernelTest,
                         testing::Range<std::size_t>(1, kMaxSha256Streams + 1));

}  // namespace
}  // namespace sealkeeper
