#include "platform/core_dumps.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "support/child_process.h"

namespace sealkeeper {
namespace {

TEST(CoreDumps, AreOffForGood) {
    rlimit allowed{};
    ASSERT_EQ(getrlimit(RLIMIT_CORE, &allowed), 0);
    if (allowed.rlim_max == 0) {
        GTEST_SKIP() << "core dumps are off already";
    }
    allowed.rlim_cur = allowed.rlim_max;
    // In a process of its own, which cannot switch them on again.
    const auto areOff = [&allowed] {
        setrlimit(RLIMIT_CORE, &allowed);
        SwitchOffCoreDumps();
        rlimit limit{1, 1};
        getrlimit(RLIMIT_CORE, &limit);
        return limit.rlim_cur == 0 && limit.rlim_max == 0;
    };
    EXPECT_EXIT(test::EndChild(areOff() ? 0 : 1), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace sealkeeper
