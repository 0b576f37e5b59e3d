#include "catalogue/read_ahead_policy.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

std::size_t AdvicesOf(ReadAheadPolicy& policy) {
    std::size_t count = 0;
    while (policy.TakeAdvice()) {
        ++count;
    }
    return count;
}

TEST(ReadAheadPolicy, AdvisesAtFirstAndAfterAReadThatWaited) {
    ReadAheadPolicy policy;
    EXPECT_EQ(AdvicesOf(policy), ReadAheadPolicy::kAdvicesAtATime);
    policy.OnRead(ReadAheadPolicy::kWait);
    EXPECT_EQ(AdvicesOf(policy), 0U);
    policy.OnRead(ReadAheadPolicy::kWait + std::chrono::nanoseconds(1));
    EXPECT_EQ(AdvicesOf(policy), ReadAheadPolicy::kAdvicesAtATime);
}

TEST(ReadAheadPolicy, ReadsThatWaitedDoNotAddUp) {
    ReadAheadPolicy policy;
    policy.OnRead(2 * ReadAheadPolicy::kWait);
    policy.OnRead(2 * ReadAheadPolicy::kWait);
    policy.OnRead(std::chrono::nanoseconds(1));
    EXPECT_EQ(AdvicesOf(policy), ReadAheadPolicy::kAdvicesAtATime);
}

}  // namespace
}  // namespace sealkeeper
