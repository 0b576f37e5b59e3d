// Which chunks are read, and when. The first byte of each counts as a call of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

#include "catalogue/hashing/chunk_lanes.h"
#include "catalogue/hashing/chunks.h"
#include "catalogue/hashing/sequential_chunk_hasher.h"
#include "fault/fault_injection.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CallCount;
using test::ResetCallCount;
using test::TempDirectory;

// A file of one whole chunk.
class SequentialChunkHasherCalls : public testing::Test {
  protected:
    SequentialChunkHasherCalls() {
        const std::string path = directory_.WriteFile("f", "");
        std::filesystem::resize_file(path, kChunkBytes);
        EXPECT_TRUE(file_->Open(path));
    }

    [[nodiscard]] ChunkToHash Whole() const { return {file_, 0, kChunkBytes}; }
    [[nodiscard]] ChunkToHash Short() const { return {file_, 0, 1}; }

    // How many of two chunks are begun when the first is awaited.
    std::size_t BegunOfTwo() {
        ResetCallCount(Call::ReadChunk);
        hasher_.Add(Short());
        hasher_.Add(Short());
        hasher_.AwaitOldest();
        return CallCount(Call::ReadChunk);
    }

    // Takes a chunk that was begun together with another, and drops the other.
    void DropABegunOne() {
        hasher_.Add(Short());
        hasher_.Add(Whole());
        EXPECT_TRUE(hasher_.Take().isRead);
        hasher_.Drop(1);
    }

    // The number of reads for the whole chunk.
    static std::size_t ReadsOf(ChunkHasher& hasher, const ChunkToHash& chunk) {
        ResetCallCount(Call::ReadInterrupted);
        hasher.Add(chunk);
        EXPECT_TRUE(hasher.Take().isRead);
        return CallCount(Call::ReadInterrupted);
    }

    TempDirectory directory_;
    std::shared_ptr<InputFile> file_ = std::make_shared<InputFile>();
    SequentialChunkHasher hasher_{ProcessSha256Engine()};
    const std::size_t bothOfTwo_ = std::min<std::size_t>(2, hasher_.LaneCount());
};

TEST_F(SequentialChunkHasherCalls, BeginsAsManyAsThereAreLanes) {
    EXPECT_EQ(BegunOfTwo(), bothOfTwo_);
}

TEST_F(SequentialChunkHasherCalls, ChunkThatWasReadHoldsNoOtherBack) {
    hasher_.Add(Short());
    EXPECT_TRUE(hasher_.Take().isRead);
    EXPECT_EQ(BegunOfTwo(), bothOfTwo_);
}

TEST_F(SequentialChunkHasherCalls, ChunkThatWasDroppedHoldsNoOtherBack) {
    DropABegunOne();
    EXPECT_EQ(BegunOfTwo(), bothOfTwo_);
}

TEST_F(SequentialChunkHasherCalls, ChunkThatWasDroppedIsReadNoMore) {
    DropABegunOne();
    const std::size_t reads = ReadsOf(hasher_, Whole());
    SequentialChunkHasher fresh(ProcessSha256Engine());
    EXPECT_EQ(reads, ReadsOf(fresh, Whole()));
}

TEST_F(SequentialChunkHasherCalls, LaneOfADroppedChunkIsIdleAgain) {
    ChunkLanes lanes(ProcessSha256Engine());
    PendingChunk chunk(Whole());
    lanes.Begin(chunk);
    EXPECT_FALSE(lanes.IsIdle());
    lanes.EndDropped();
    EXPECT_FALSE(lanes.IsIdle());
    chunk.isDropped = true;
    lanes.EndDropped();
    EXPECT_TRUE(lanes.IsIdle());
    const auto ended = lanes.TakeEnded();
    ASSERT_EQ(ended.size(), 1U);
    EXPECT_EQ(ended[0], &chunk);
    EXPECT_FALSE(chunk.result.isRead);
}

}  // namespace
}  // namespace sealkeeper
