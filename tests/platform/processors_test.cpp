#include "platform/processors.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <cstddef>

namespace sealkeeper {
namespace {

TEST(Processors, ThereIsOneAtLeast) {
    EXPECT_GE(CountProcessors(), 1U);
}

#ifdef CPU_COUNT

TEST(Processors, OnlyThoseCountThatTheProcessMayRunOn) {
    cpu_set_t before;
    ASSERT_EQ(sched_getaffinity(0, sizeof(before), &before), 0);
    if (CPU_COUNT(&before) < 2) {
        GTEST_SKIP() << "there is one processor alone";
    }
    EXPECT_EQ(CountProcessors(), static_cast<std::size_t>(CPU_COUNT(&before)));
    std::size_t first = 0;
    while (!CPU_ISSET(first, &before)) {
        ++first;
    }
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(first, &one);
    ASSERT_EQ(sched_setaffinity(0, sizeof(one), &one), 0);
    EXPECT_EQ(CountProcessors(), 1U);
    EXPECT_EQ(sched_setaffinity(0, sizeof(before), &before), 0);
}

#endif

}  // namespace
}  // namespace sealkeeper
