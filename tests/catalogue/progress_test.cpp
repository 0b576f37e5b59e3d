#include "catalogue/progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

std::string Tick(bool final) {
    CapturedOutput output;
    ProgressTick(final);
    return output.Take();
}

TEST(Progress, OneDotAfterHalfASecondAndNoneRightBehindIt) {
    static_cast<void>(Tick(false));
    std::this_thread::sleep_for(std::chrono::milliseconds(510));
    EXPECT_EQ(Tick(false), ".");
    EXPECT_EQ(Tick(false), "");
    EXPECT_EQ(Tick(true), "\n");
}

TEST(Progress, FinalTickMayCarryADotToo) {
    static_cast<void>(Tick(false));
    std::this_thread::sleep_for(std::chrono::milliseconds(510));
    EXPECT_EQ(Tick(true), ".\n");
}

TEST(Progress, NoDotBeforeHalfASecond) {
    static_cast<void>(Tick(false));
    std::this_thread::sleep_for(std::chrono::milliseconds(510));
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(Tick(false), ".");
    std::this_thread::sleep_for(std::chrono::milliseconds(250));
    const std::string ticked = Tick(false);
    if (std::chrono::steady_clock::now() - start > std::chrono::milliseconds(490)) {
        GTEST_SKIP() << "this machine slept too long to tell";
    }
    EXPECT_EQ(ticked, "");
}

}  // namespace
}  // namespace sealkeeper
