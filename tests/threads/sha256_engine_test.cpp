#include "catalogue/hashing/sha256_engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <barrier>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "catalogue/hashing/sha256_kernels.h"
#include "catalogue/hashing/sha256_test_support.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Digests = std::vector<std::string>;
using Kernels = std::vector<const Sha256Kernel*>;

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

std::vector<Bytes> Messages(std::size_t count) {
    std::vector<Bytes> messages;
    for (std::size_t i = 0; i < count; ++i) {
        messages.push_back(test::NumberedMessage(1000 + 301 * (i % 5), i));
    }
    return messages;
}

void ExpectRightDigests(const Sha256Engine& engine, std::size_t messageCount,
                        std::size_t mostBlocks) {
    const std::vector<Bytes> messages = Messages(messageCount);
    const std::vector<std::span<const std::uint8_t>> spans(messages.begin(), messages.end());
    const auto compress = [&](std::span<const Sha256Lane> lanes, std::size_t blockCount) {
        engine.Compress(lanes, blockCount);
    };
    EXPECT_EQ(test::DigestsBy(compress, spans, mostBlocks), test::ReferenceDigests(spans))
        << messageCount << " lanes";
}

Kernels AllKernels() {
    const auto kernels = CompiledSha256Kernels();
    return {kernels.begin(), kernels.end()};
}

// A kernel that counts its calls.
std::atomic<std::size_t> countedCalls = 0;

void CompressAndCount(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
    ++countedCalls;
    kPortableSha256Kernel.compress(lanes, laneCount, blockCount);
}

constexpr Sha256Kernel kCountingKernel = {"counting", 1, [] { return true; }, CompressAndCount};

// The number of kernel calls for one lane of one block. The self-test has run before.
std::size_t CallsForOneLane(const Sha256Engine& engine) {
    const Bytes block(kSha256BlockBytes);
    std::array<std::uint32_t, kSha256StateWords> state{};
    const Sha256Lane lane{state.data(), block.data()};
    engine.Compress({&lane, 1}, 1);
    const std::size_t before = countedCalls;
    engine.Compress({&lane, 1}, 1);
    return countedCalls - before;
}

// The parameter is the engine's only kernel.
class SingleKernelEngineTest : public testing::TestWithParam<const Sha256Kernel*> {};

TEST_P(SingleKernelEngineTest, GivesRightDigestsForEveryNumberOfLanes) {
    if (!GetParam()->isSupported()) {
        GTEST_SKIP() << "this processor does not have the instructions: " << GetParam()->name;
    }
    const Sha256Engine engine({GetParam()});
    EXPECT_EQ(engine.LaneCount(), GetParam()->maxLanes);
    for (std::size_t lanes = 1; lanes <= kMaxSha256Lanes; ++lanes) {
        ExpectRightDigests(engine, lanes, kNoLimit);
        ExpectRightDigests(engine, lanes, 3);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKernel, SingleKernelEngineTest, testing::ValuesIn(AllKernels()),
                         test::KernelTestName);

TEST(Sha256Engine, OfTheProcessGivesRightDigestsForEveryNumberOfLanes) {
    for (std::size_t lanes = 1; lanes <= kMaxSha256Lanes; ++lanes) {
        ExpectRightDigests(ProcessSha256Engine(), lanes, kNoLimit);
        ExpectRightDigests(ProcessSha256Engine(), lanes, 3);
    }
}

TEST(Sha256Engine, OfTheProcessHasTheLanesOfTheWidestSupportedKernel) {
    std::size_t most = 0;
    for (const Sha256Kernel* kernel : CompiledSha256Kernels()) {
        most = kernel->isSupported() ? std::max(most, kernel->maxLanes) : most;
    }
    EXPECT_EQ(ProcessSha256Engine().LaneCount(), most);
}

TEST(Sha256Engine, ChangesNothingWithoutLanesOrBlocks) {
    const Sha256Engine engine(AllKernels());
    const std::array<std::uint32_t, kSha256StateWords> before = {1, 2, 3, 4, 5, 6, 7, 8};
    auto first = before;
    auto second = before;
    const std::array<Sha256Lane, 2> lanes = {{{first.data(), nullptr}, {second.data(), nullptr}}};
    engine.Compress({}, 1);
    engine.Compress(std::span(lanes).first(1), 0);
    engine.Compress(lanes, 0);
    EXPECT_EQ(first, before);
    EXPECT_EQ(second, before);
}

TEST(Sha256Engine, TakesTheFirstUsableKernelForOneLane) {
    EXPECT_EQ(CallsForOneLane(Sha256Engine({&kCountingKernel, &kPortableSha256Kernel})), 1U);
    EXPECT_EQ(CallsForOneLane(Sha256Engine({&kPortableSha256Kernel, &kCountingKernel})), 0U);
}

TEST(Sha256Engine, ProvesAndTimesNothingBeforeItIsUsedAndNotForOneLane) {
    countedCalls = 0;
    const Sha256Engine engine({&kPortableSha256Kernel, &kCountingKernel});
    EXPECT_EQ(engine.LaneCount(), 1U);
    ExpectRightDigests(engine, 1, kNoLimit);
    const std::array<Sha256Lane, 2> lanes{};
    engine.Compress(lanes, 0);
    engine.Compress({}, 1);
    EXPECT_EQ(countedCalls, 0U);
    ExpectRightDigests(engine, 2, kNoLimit);
    EXPECT_GT(countedCalls, 0U);
}

// Counts its calls, and never gives a correct digest.
constexpr Sha256Kernel kWrongKernel = {
    "wrong", kMaxSha256Lanes, [] { return true; },
    [](const Sha256Lane*, std::size_t, std::size_t) { ++countedCalls; }, true};

TEST(Sha256Engine, LeavesOutAKernelThatGivesWrongAnswers) {
    for (const Kernels& kernels :
         {Kernels{&kWrongKernel, &kPortableSha256Kernel}, Kernels{&kWrongKernel}}) {
        const Sha256Engine engine(kernels);
        for (std::size_t lanes = 1; lanes <= kMaxSha256Lanes; ++lanes) {
            ExpectRightDigests(engine, lanes, kNoLimit);
        }
    }
}

TEST(Sha256Engine, NeverCallsAKernelThatThisProcessorDoesNotSupport) {
    constexpr Sha256Kernel kUnsupported = {
        "unsupported", kMaxSha256Lanes, [] { return false; },
        [](const Sha256Lane*, std::size_t, std::size_t) { ++countedCalls; }, true};
    for (const Kernels& kernels :
         {Kernels{&kUnsupported, &kPortableSha256Kernel}, Kernels{&kUnsupported}, Kernels{}}) {
        countedCalls = 0;
        const Sha256Engine engine(kernels);
        EXPECT_EQ(engine.LaneCount(), 1U);
        for (std::size_t lanes = 1; lanes <= kMaxSha256Lanes; ++lanes) {
            ExpectRightDigests(engine, lanes, kNoLimit);
        }
        EXPECT_EQ(countedCalls, 0U);
    }
}

TEST(Sha256Engine, IsFirstUsedBySeveralThreadsAtATime) {
    constexpr std::size_t kThreads = 8;
    for (int repetition = 0; repetition < 5; ++repetition) {
        const Sha256Engine engine(AllKernels());
        std::barrier start(kThreads);
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&, thread] {
                start.arrive_and_wait();
                for (std::size_t lanes = 0; lanes < kMaxSha256Lanes; ++lanes) {
                    ExpectRightDigests(engine, (lanes + 2 * thread) % kMaxSha256Lanes + 1, 3);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
}

}  // namespace
}  // namespace sealkeeper
