#include <gtest/gtest.h>
#include <sched.h>

#include <algorithm>
#include <thread>

#include "fault/fault_injection.h"
#include "platform/processors.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ScopedFault;

#ifdef CPU_COUNT

// As on a machine that has more than can be told of.
TEST(ProcessorsFaults, WhereItMayRunNeedNotBeTold) {
    const ScopedFault fault(Call::Affinity);
    EXPECT_EQ(CountProcessors(), std::max(std::thread::hardware_concurrency(), 1U));
    EXPECT_TRUE(fault.Struck());
}

#endif

}  // namespace
}  // namespace sealkeeper
