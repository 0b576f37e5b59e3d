#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <string>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/hashing/make_chunk_hasher.h"
#include "catalogue/hashing/threaded_chunk_hasher.h"
#include "fault/fault_injection.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ScopedFault;
using test::TempDirectory;

class JobsFaults : public testing::Test {
  protected:
    JobsFaults() { EXPECT_TRUE(file_->Open(directory_.WriteFile("f", "hello"))); }

    void ExpectDigests(ChunkHasher& hasher) {
        for (int i = 0; i < 40; ++i) {
            hasher.Add({file_, 0, 5});
        }
        for (int i = 0; i < 40; ++i) {
            const HashedChunk chunk = hasher.Take();
            ASSERT_TRUE(chunk.isRead);
            EXPECT_EQ(test::Hex(chunk.digest), test::kDigestOfHello);
        }
    }

    TempDirectory directory_;
    std::shared_ptr<InputFile> file_ = std::make_shared<InputFile>();
};

TEST_F(JobsFaults, OneJobStartsNoThread) {
    test::ResetCallCount(Call::StartThread);
    ExpectDigests(*MakeChunkHasher(1));
    EXPECT_EQ(test::CallCount(Call::StartThread), 0U);
    ExpectDigests(*MakeChunkHasher(2));
    EXPECT_EQ(test::CallCount(Call::StartThread), 2U);
}

TEST_F(JobsFaults, ThreadsHaveLanesOfTheirOwn) {
    const std::size_t lanes = ProcessSha256Engine().LaneCount();
    EXPECT_EQ(MakeChunkHasher(1)->LaneCount(), lanes);
    EXPECT_EQ(MakeChunkHasher(2)->LaneCount(), 2 * lanes);
}

TEST_F(JobsFaults, WithoutAnyThreadTheCallerHashes) {
    const ScopedFault fault(Call::StartThread);
    const auto hasher = MakeChunkHasher(3);
    EXPECT_TRUE(fault.Struck());
    EXPECT_EQ(hasher->LaneCount(), ProcessSha256Engine().LaneCount());
    ExpectDigests(*hasher);
}

TEST_F(JobsFaults, FewerThreadsDoItAll) {
    const ScopedFault fault(Call::StartThread, 1);
    ThreadedChunkHasher hasher(ProcessSha256Engine(), 3);
    EXPECT_TRUE(fault.Struck());
    EXPECT_EQ(hasher.WorkerCount(), 1U);
    ExpectDigests(hasher);
}

// A compiler may leave out memory that nobody uses.
TEST_F(JobsFaults, MemoryForTheRestIsHeldWhileThreadsStart) {
    constexpr std::size_t kReservedBytes = 16'777'216;
    ProcessSha256Engine().Prepare();
    test::ResetLargestAllocation();
    const ThreadedChunkHasher hasher(ProcessSha256Engine(), 2);
    EXPECT_EQ(test::LargestAllocation(), kReservedBytes);
}

TEST_F(JobsFaults, AfterAChunkThatCannotBeReadTheOthersOfItsFileWait) {
    ThreadedChunkHasher hasher(ProcessSha256Engine(), 1);
    const std::size_t lanes = hasher.LaneCount();
    test::ResetCallCount(Call::ReadChunk);
    for (int i = 0; i < 200; ++i) {
        hasher.Add({file_, 0, 6});
    }
    for (std::size_t taken = 0; taken <= lanes; ++taken) {
        EXPECT_FALSE(hasher.Take().isRead);
    }
    // The chunks begun together, then one at a time.
    EXPECT_LE(test::CallCount(Call::ReadChunk), lanes + 1);
}

// Workers allocate nothing, so only the caller can run out of memory.
TEST_F(JobsFaults, EveryAllocationMayFail) {
    ProcessSha256Engine().Prepare();
    bool struck = true;
    for (std::size_t allocation = 0; struck; ++allocation) {
        ASSERT_LT(allocation, 1000U);
        ScopedFault fault(Call::Allocation, allocation, ScopedFault::Reach::Once);
        try {
            const auto hasher = MakeChunkHasher(2);
            for (int i = 0; i < 40; ++i) {
                hasher->Add({file_, 0, 5});
            }
            while (hasher->PendingCount() > 0) {
                EXPECT_TRUE(hasher->Take().isRead);
            }
        } catch (const std::bad_alloc&) {
            // What was begun has ended, and nothing hangs.
        }
        fault.Disarm();
        struck = fault.Struck();
    }
}

}  // namespace
}  // namespace sealkeeper
