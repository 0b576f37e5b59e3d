#include "catalogue/hashing/worker_load.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

constexpr std::size_t kLanes = 16;

// A load whose caller is busy with adding chunks.
WorkerLoad WhileAdding(std::size_t workers, std::size_t busy, std::size_t waiting) {
    return {workers, kLanes, busy, waiting, false};
}

WorkerLoad WhileWaiting(std::size_t workers, std::size_t busy, std::size_t waiting) {
    return {workers, kLanes, busy, waiting, true};
}

TEST(WorkerLoad, OneWorkerStaysIdleWhileTheCallerIsBusy) {
    EXPECT_TRUE(WhileAdding(4, 2, kLanes).ShouldGetBusy());
    EXPECT_FALSE(WhileAdding(4, 3, kLanes).ShouldGetBusy());
    EXPECT_TRUE(WhileWaiting(4, 3, kLanes).ShouldGetBusy());
    EXPECT_FALSE(WhileWaiting(4, 4, kLanes).ShouldGetBusy());
}

TEST(WorkerLoad, SingleWorkerMayAlwaysBegin) {
    EXPECT_TRUE(WhileAdding(1, 0, kLanes).ShouldGetBusy());
    EXPECT_FALSE(WhileAdding(1, 1, kLanes).ShouldGetBusy());
}

TEST(WorkerLoad, WorkerBeginsWithFullLanesUnlessTheCallerWaits) {
    EXPECT_FALSE(WhileAdding(2, 0, kLanes - 1).ShouldGetBusy());
    EXPECT_TRUE(WhileAdding(2, 0, kLanes).ShouldGetBusy());
    EXPECT_TRUE(WhileWaiting(2, 0, 1).ShouldGetBusy());
    EXPECT_FALSE(WhileWaiting(2, 0, 0).ShouldGetBusy());
}

TEST(WorkerLoad, IdleWorkersAreLeftAsMuch) {
    // The worker that takes is busy already.
    EXPECT_EQ(WhileWaiting(2, 1, 16).ShareFor(kLanes), 8U);
    EXPECT_EQ(WhileWaiting(2, 1, 17).ShareFor(kLanes), 9U);
    EXPECT_EQ(WhileWaiting(4, 1, 16).ShareFor(kLanes), 4U);
    EXPECT_EQ(WhileWaiting(4, 3, 16).ShareFor(kLanes), 8U);
    EXPECT_EQ(WhileWaiting(64, 1, 3).ShareFor(kLanes), 1U);
}

// The caller may wait a moment later, and the idle worker would find nothing left.
TEST(WorkerLoad, WorkerThatMayNotBeginYetIsLeftItsShareAsWell) {
    EXPECT_EQ(WhileAdding(2, 1, 16).ShareFor(kLanes), 8U);
}

TEST(WorkerLoad, BusyWorkersAreLeftNothing) {
    EXPECT_EQ(WhileWaiting(2, 2, 16).ShareFor(kLanes), 16U);
    EXPECT_EQ(WhileWaiting(2, 2, 5).ShareFor(kLanes), 5U);
    EXPECT_EQ(WhileAdding(1, 1, 16).ShareFor(kLanes), 16U);
}

TEST(WorkerLoad, WorkerTakesMoreThanItsShareWhileThatIsLittleWork) {
    constexpr auto kLittle = WorkerLoad::kLittleBytes;
    EXPECT_TRUE(WorkerLoad::TakesAnother(8, 7, 100 * kLittle));
    EXPECT_TRUE(WorkerLoad::TakesAnother(8, 8, kLittle - 1));
    EXPECT_FALSE(WorkerLoad::TakesAnother(8, 8, kLittle));
    // No share: the caller is about to add chunks that fill the lanes.
    EXPECT_FALSE(WorkerLoad::TakesAnother(0, 0, 0));
}

TEST(WorkerLoad, NoWorkerTakesMoreThanItsIdleLanes) {
    EXPECT_EQ(WhileWaiting(2, 2, 100).ShareFor(kLanes), kLanes);
    EXPECT_EQ(WhileWaiting(2, 1, 100).ShareFor(3), 3U);
}

TEST(WorkerLoad, IdleLanesAreFilledTogetherWhileTheCallerIsBusy) {
    EXPECT_EQ(WhileAdding(2, 2, 4).ShareFor(5), 0U);
    EXPECT_EQ(WhileAdding(2, 2, 5).ShareFor(5), 5U);
    EXPECT_EQ(WhileWaiting(2, 2, 4).ShareFor(5), 4U);
}

}  // namespace
}  // namespace sealkeeper
