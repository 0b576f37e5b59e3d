#include "catalogue/hashing/read_ahead_policy.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

using Policy = ReadAheadPolicy;

std::size_t StepsOf(Policy& policy) {
    std::size_t steps = 0;
    while (policy.TakeSteps(1)) {
        ++steps;
    }
    return steps;
}

TEST(ReadAheadPolicy, AdvisesAtFirstAndAsFarAsReadsWaited) {
    Policy policy;
    EXPECT_EQ(StepsOf(policy), Policy::kStepsAtFirst);
    policy.Earn(Policy::WaitOf(Policy::kWait));
    EXPECT_EQ(StepsOf(policy), 0U);
    policy.Earn(100 * Policy::kStepTime);
    EXPECT_EQ(StepsOf(policy), 100U);
    policy.Earn(30 * Policy::kStepTime);
    policy.Earn(Policy::WaitOf(std::chrono::nanoseconds(1)));
    policy.Earn(50 * Policy::kStepTime);
    EXPECT_EQ(StepsOf(policy), 80U);
}

TEST(ReadAheadPolicy, OneReadEarnsLittleHoweverLongItTakes) {
    EXPECT_EQ(Policy::WaitOf(Policy::kLongestWait), Policy::kLongestWait);
    EXPECT_EQ(Policy::WaitOf(std::chrono::hours(1)), Policy::kLongestWait);
    EXPECT_EQ(Policy::WaitOf(Policy::kWait), std::chrono::nanoseconds::zero());
}

TEST(ReadAheadPolicy, WaitingForLongIsRememberedForAWhile) {
    Policy policy;
    policy.Earn(std::chrono::hours(1));
    policy.Earn(std::chrono::hours(1));
    EXPECT_EQ(StepsOf(policy), Policy::kMaxSteps);
}

TEST(ReadAheadPolicy, AdviceIsGivenAsAWhole) {
    Policy policy;
    EXPECT_FALSE(policy.TakeSteps(Policy::kStepsAtFirst + 1));
    EXPECT_TRUE(policy.TakeSteps(Policy::kStepsAtFirst));
    EXPECT_FALSE(policy.TakeSteps(1));
    EXPECT_TRUE(policy.TakeSteps(0));
}

// How many of a thousand chunks are advised if each read of `readCount` takes `duration`.
std::size_t AdvisedOfAThousandChunks(std::size_t readCount, std::chrono::microseconds duration) {
    constexpr std::size_t kReadsOfAChunk = 32;
    constexpr std::size_t kStepsOfAChunk = 16;
    Policy policy;
    static_cast<void>(StepsOf(policy));
    std::size_t advisedChunks = 0;
    for (std::size_t read = 0; read < 1000 * kReadsOfAChunk; ++read) {
        policy.Earn(
            Policy::WaitOf(read % readCount == 0 ? duration : std::chrono::microseconds(15)));
        if (read % kReadsOfAChunk == 0 && policy.TakeSteps(kStepsOfAChunk)) {
            ++advisedChunks;
        }
    }
    return advisedChunks;
}

TEST(ReadAheadPolicy, TellsMemoryFromADisk) {
    EXPECT_LT(AdvisedOfAThousandChunks(150, std::chrono::microseconds(70)), 250U);
    EXPECT_GT(AdvisedOfAThousandChunks(150, std::chrono::microseconds(1000)), 900U);
    EXPECT_GT(AdvisedOfAThousandChunks(32, std::chrono::microseconds(100)), 900U);
}

}  // namespace
}  // namespace sealkeeper
