// Tests each compiled kernel with each number of lanes, whatever the engine would choose.
#include "catalogue/hashing/sha256_kernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "catalogue/hashing/sha256_kernels.h"
#include "catalogue/hashing/sha256_test_support.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;
using test::NumberedMessage;

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

struct KernelCase {
    const Sha256Kernel* kernel;
    std::size_t laneCount;
};

void PrintTo(const KernelCase& kernelCase, std::ostream* out) {
    *out << kernelCase.kernel->name << ", " << kernelCase.laneCount;
}

std::vector<KernelCase> KernelCases() {
    std::vector<KernelCase> cases;
    for (const Sha256Kernel* kernel : CompiledSha256Kernels()) {
        for (std::size_t laneCount = 1; laneCount <= kernel->maxLanes; ++laneCount) {
            cases.push_back({kernel, laneCount});
        }
    }
    return cases;
}

class Sha256KernelTest : public testing::TestWithParam<KernelCase> {
  protected:
    void SetUp() override {
        if (!Kernel().isSupported()) {
            GTEST_SKIP() << "this processor does not have the instructions: " << Kernel().name;
        }
    }

    [[nodiscard]] static const Sha256Kernel& Kernel() { return *GetParam().kernel; }

    [[nodiscard]] static std::size_t LaneCount() { return GetParam().laneCount; }

    // Hashes messages of these sizes, one per lane. Each begins at its offset in an allocation, and
    // ends at the end of that.
    static void ExpectDigests(const std::vector<std::size_t>& sizesBytes,
                              const std::vector<std::size_t>& offsets, std::size_t mostBlocks) {
        std::vector<Bytes> allocations;
        std::vector<std::span<const std::uint8_t>> messages;
        for (std::size_t lane = 0; lane < sizesBytes.size(); ++lane) {
            const Bytes message = NumberedMessage(sizesBytes[lane], lane);
            Bytes allocation(offsets[lane] + message.size());
            std::copy(message.rbegin(), message.rend(), allocation.rbegin());
            allocations.push_back(std::move(allocation));
            messages.push_back(std::span(allocations.back()).subspan(offsets[lane]));
        }
        const auto compress = [](std::span<const Sha256Lane> lanes, std::size_t blockCount) {
            Kernel().compress(lanes.data(), lanes.size(), blockCount);
        };
        EXPECT_EQ(test::DigestsBy(compress, messages, mostBlocks), test::ReferenceDigests(messages))
            << "sizes " << testing::PrintToString(sizesBytes) << ", offsets "
            << testing::PrintToString(offsets) << ", blocks a call " << mostBlocks;
    }

    static void ExpectDigests(const std::vector<std::size_t>& sizesBytes, std::size_t mostBlocks) {
        ExpectDigests(sizesBytes, std::vector<std::size_t>(sizesBytes.size()), mostBlocks);
    }

    [[nodiscard]] static std::vector<std::size_t> ForEachLane(std::size_t value) {
        return std::vector<std::size_t>(LaneCount(), value);
    }

    // The value of `function` for each lane.
    template <typename Function>
    [[nodiscard]] static std::vector<std::size_t> ForEachLane(Function function) {
        std::vector<std::size_t> values;
        for (std::size_t lane = 0; lane < LaneCount(); ++lane) {
            values.push_back(function(lane));
        }
        return values;
    }
};

TEST_P(Sha256KernelTest, HashesEveryLengthUpTo300) {
    for (std::size_t length = 0; length <= 300; ++length) {
        ExpectDigests(ForEachLane(length), kNoLimit);
    }
}

TEST_P(Sha256KernelTest, HashesDifferentLengthsSideBySide) {
    for (std::size_t length = 0; length <= 300; length += 7) {
        ExpectDigests(ForEachLane([=](std::size_t lane) { return (length + 97 * lane) % 301; }),
                      kNoLimit);
    }
    constexpr std::array<std::size_t, 4> kSizes = {0, 20003, 63, 65536};
    ExpectDigests(ForEachLane([&](std::size_t lane) { return kSizes[lane % kSizes.size()]; }),
                  kNoLimit);
}

TEST_P(Sha256KernelTest, HashesAnyNumberOfBlocksACall) {
    for (std::size_t mostBlocks = 1; mostBlocks <= 9; ++mostBlocks) {
        ExpectDigests(ForEachLane(std::size_t{20 * kSha256BlockBytes + 5}), mostBlocks);
    }
}

TEST_P(Sha256KernelTest, ReadsFromAnyAlignment) {
    for (std::size_t offset = 0; offset < kSha256BlockBytes; ++offset) {
        const auto sizes = ForEachLane(std::size_t{3 * kSha256BlockBytes + 17});
        ExpectDigests(sizes, ForEachLane(offset), kNoLimit);
        ExpectDigests(sizes, ForEachLane([=](std::size_t lane) {
                          return (offset + 5 * lane) % kSha256BlockBytes;
                      }),
                      2);
    }
}

TEST_P(Sha256KernelTest, TakesLanesInAnyPlace) {
    std::vector<Bytes> messages;
    std::vector<std::array<std::uint32_t, kSha256StateWords>> states(LaneCount());
    std::vector<Sha256Lane> lanes;
    for (std::size_t lane = 0; lane < LaneCount(); ++lane) {
        messages.push_back(NumberedMessage(2 * kSha256BlockBytes, lane));
        lanes.push_back({states[lane].data(), messages[lane].data()});
    }
    Kernel().compress(lanes.data(), lanes.size(), 2);
    const auto inOrder = states;
    for (std::size_t shift = 1; shift < LaneCount(); ++shift) {
        std::fill(states.begin(), states.end(), std::array<std::uint32_t, kSha256StateWords>{});
        std::rotate(lanes.begin(), lanes.begin() + 1, lanes.end());
        Kernel().compress(lanes.data(), lanes.size(), 2);
        EXPECT_EQ(states, inOrder) << "shifted by " << shift;
    }
}

TEST_P(Sha256KernelTest, WritesTheStatesAlone) {
    constexpr std::uint32_t kGuard = 0xA5C3F00D;
    constexpr std::size_t kGuardWords = 8;
    constexpr std::size_t kBlocks = 3;
    using GuardedState = std::array<std::uint32_t, kGuardWords + kSha256StateWords + kGuardWords>;
    std::array<GuardedState, kMaxSha256Lanes> states{};
    std::array<Sha256Lane, kMaxSha256Lanes> lanes{};
    const auto message = NumberedMessage(kBlocks * kSha256BlockBytes, 0);
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        states[lane].fill(kGuard);
        lanes[lane] = {states[lane].data() + kGuardWords, message.data()};
    }

    Kernel().compress(lanes.data(), LaneCount(), kBlocks);

    const auto isGuard = [](std::uint32_t word) { return word == kGuard; };
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        SCOPED_TRACE("lane " + std::to_string(lane));
        const std::span<const std::uint32_t> words = states[lane];
        const auto before = words.first(kGuardWords);
        const auto state = words.subspan(kGuardWords, kSha256StateWords);
        const auto after = words.last(kGuardWords);
        EXPECT_TRUE(std::all_of(before.begin(), before.end(), isGuard));
        EXPECT_TRUE(std::all_of(after.begin(), after.end(), isGuard));
        EXPECT_EQ(std::none_of(state.begin(), state.end(), isGuard), lane < LaneCount());
        EXPECT_EQ(std::all_of(state.begin(), state.end(), isGuard), lane >= LaneCount());
    }
}

TEST_P(Sha256KernelTest, KeepsTheStatesWithoutLanesOrBlocks) {
    constexpr std::uint32_t kAnyWord = 0x01234567;
    const std::array<std::uint8_t, kSha256BlockBytes> block{};
    std::array<std::array<std::uint32_t, kSha256StateWords>, kMaxSha256Lanes> states{};
    std::array<Sha256Lane, kMaxSha256Lanes> lanes{};
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
        states[lane].fill(kAnyWord);
        lanes[lane] = {states[lane].data(), nullptr};
    }
    const auto before = states;

    Kernel().compress(lanes.data(), LaneCount(), 0);
    EXPECT_EQ(states, before);

    for (Sha256Lane& lane : lanes) {
        lane.blocks = block.data();
    }
    Kernel().compress(lanes.data(), 0, 1);
    Kernel().compress(nullptr, 0, 1);
    EXPECT_EQ(states, before);
}

// The examples in the Secure Hash Standard.
TEST_P(Sha256KernelTest, GivesTheKnownAnswers) {
    struct KnownAnswer {
        std::string message;
        const char* digest;
    };
    const std::vector<KnownAnswer> answers = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        {std::string(1000000, 'a'),
         "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    };
    for (const KnownAnswer& answer : answers) {
        const Bytes bytes = test::BytesOf(answer.message);
        const std::vector<std::span<const std::uint8_t>> messages(LaneCount(), bytes);
        const auto compress = [](std::span<const Sha256Lane> lanes, std::size_t blockCount) {
            Kernel().compress(lanes.data(), lanes.size(), blockCount);
        };
        EXPECT_EQ(test::DigestsBy(compress, messages, kNoLimit),
                  std::vector<std::string>(LaneCount(), answer.digest));
    }
}

std::string CaseName(const testing::TestParamInfo<KernelCase>& info) {
    return test::TestNameOf(*info.param.kernel) + "x" + std::to_string(info.param.laneCount);
}

INSTANTIATE_TEST_SUITE_P(EveryKernelAndLaneCount, Sha256KernelTest,
                         testing::ValuesIn(KernelCases()), CaseName);

}  // namespace
}  // namespace sealkeeper
