#include <gtest/gtest.h>
#include <sched.h>

#include "fault/fault_injection.h"
#include "platform/processors.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ScopedFault;
using Reach = ScopedFault::Reach;

class ProcessorsFaults : public testing::Test {
  protected:
    void SetUp() override {
#ifndef CPU_COUNT
        GTEST_SKIP() << "the system does not tell on which processors a process may run";
#endif
    }
};

TEST_F(ProcessorsFaults, ThoseThatTheProcessMayRunOnCount) {
    for (const int processors : {1, 3, 300}) {
        const ScopedFault told(Call::Affinity, 0, Reach::Onwards, processors);
        EXPECT_EQ(CountProcessors(), static_cast<std::size_t>(processors));
    }
}

TEST_F(ProcessorsFaults, ThereIsOneAtLeast) {
    const ScopedFault told(Call::Affinity, 0, Reach::Onwards, 0);
    EXPECT_EQ(CountProcessors(), 1U);
}

// As on a machine with more processors than the call can report.
TEST_F(ProcessorsFaults, WhereItMayRunNeedNotBeTold) {
    const ScopedFault fault(Call::AffinityFailure);
    EXPECT_GE(CountProcessors(), 1U);
    EXPECT_TRUE(fault.Struck());
}

}  // namespace
}  // namespace sealkeeper
