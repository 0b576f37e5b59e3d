#include "platform/core_dumps.h"

#include <gtest/gtest.h>

#include "support/core_dump_limit.h"

namespace sealkeeper {
namespace {

TEST(CoreDumps, AreSwitchedOff) {
    test::LimitCoreDumps(1);
    if (!test::MayWriteCoreDumps()) {
        GTEST_SKIP() << "the process may write none in any case";
    }
    SwitchOffCoreDumps();
    EXPECT_FALSE(test::MayWriteCoreDumps());
}

}  // namespace
}  // namespace sealkeeper
