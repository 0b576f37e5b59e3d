#include "catalogue/hashing/chunk_hasher.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/hashing/chunks.h"
#include "catalogue/hashing/threaded_chunk_hasher.h"
#include "support/temp_directory.h"
#include "threads/hashing_variants.h"

namespace sealkeeper {
namespace {

using test::BytesOf;
using test::Hex;
using test::PatternText;
using test::Sha256Hex;
using test::TempDirectory;

class ChunkHasherJobs : public testing::TestWithParam<test::HashingVariant> {
  protected:
    // An open file of `content`.
    std::shared_ptr<const InputFile> FileOf(const std::string& content) {
        auto file = std::make_shared<InputFile>();
        EXPECT_TRUE(file->Open(directory_.WriteFile("f" + std::to_string(fileCount_++), content)));
        return file;
    }

    void Add(std::size_t offset, std::size_t lengthBytes) {
        hasher_->Add({file_, offset, lengthBytes});
    }

    void ExpectNext(std::size_t offset, std::size_t lengthBytes) {
        const HashedChunk chunk = hasher_->Take();
        ASSERT_TRUE(chunk.isRead) << offset << ", " << lengthBytes;
        EXPECT_EQ(Hex(chunk.digest), Sha256Hex(BytesOf(content_.substr(offset, lengthBytes))))
            << offset << ", " << lengthBytes;
    }

    TempDirectory directory_;
    std::size_t fileCount_ = 0;
    std::string content_ = PatternText(300'000);
    std::shared_ptr<const InputFile> file_ = FileOf(content_);
    std::unique_ptr<ChunkHasher> hasher_ = GetParam().MakeHasher();
};

TEST_P(ChunkHasherJobs, DigestsComeInTheOrderOfTheChunks) {
    // Lengths around blocks and around possible ends of pieces, and a long one among short ones.
    std::vector<std::size_t> lengths = {0, 1, 55, 56, 63, 64, 65, 119, 120, 128, 200'000, 3};
    for (std::size_t length = 16'384; length <= 262'144; length *= 2) {
        lengths.insert(lengths.end(), {length - 1, length, length + 1, length + 64, 7});
    }
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        Add(i, lengths[i]);
    }
    EXPECT_EQ(hasher_->PendingCount(), lengths.size());
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        ExpectNext(i, lengths[i]);
    }
    EXPECT_EQ(hasher_->PendingCount(), 0U);
}

TEST_P(ChunkHasherJobs, ChunksMayBeAddedOneByOneWhileOthersAreTaken) {
    constexpr std::size_t kCount = 700;
    constexpr std::size_t kAhead = 40;
    const auto lengthOf = [](std::size_t i) { return i * 7919 % 5000; };
    for (std::size_t i = 0; i < kCount + kAhead; ++i) {
        if (i < kCount) {
            Add(i, lengthOf(i));
        }
        if (i >= kAhead) {
            ExpectNext(i - kAhead, lengthOf(i - kAhead));
        }
    }
}

TEST_P(ChunkHasherJobs, AwaitedChunkIsTheOneThatIsTaken) {
    Add(0, 100'000);
    Add(1, 1);
    hasher_->AwaitOldest();
    hasher_->AwaitOldest();
    EXPECT_EQ(hasher_->PendingCount(), 2U);
    ExpectNext(0, 100'000);
    ExpectNext(1, 1);
}

TEST_P(ChunkHasherJobs, ChunkThatCannotBeReadLeavesTheOthersAlone) {
    const auto shortFile = FileOf("hello");
    for (std::size_t i = 0; i < 60; ++i) {
        hasher_->Add({shortFile, 0, i % 3 == 0 ? std::size_t{6} : std::size_t{5}});
        Add(i, 20'000);
    }
    for (std::size_t i = 0; i < 60; ++i) {
        const HashedChunk chunk = hasher_->Take();
        EXPECT_EQ(chunk.isRead, i % 3 != 0) << i;
        if (chunk.isRead) {
            EXPECT_EQ(Hex(chunk.digest), test::kDigestOfHello);
        }
        ExpectNext(i, 20'000);
    }
}

TEST_P(ChunkHasherJobs, DroppedChunksAreNotTaken) {
    for (std::size_t i = 0; i < 100; ++i) {
        Add(i, 30'000);
    }
    ExpectNext(0, 30'000);
    hasher_->Drop(0);
    hasher_->Drop(50);
    EXPECT_EQ(hasher_->PendingCount(), 49U);
    ExpectNext(51, 30'000);
    hasher_->Drop(hasher_->PendingCount());
    EXPECT_EQ(hasher_->PendingCount(), 0U);
    Add(5, 5);
    ExpectNext(5, 5);
}

TEST_P(ChunkHasherJobs, NoFileIsKeptOpenLongerThanItsChunks) {
    std::weak_ptr<const InputFile> taken;
    std::weak_ptr<const InputFile> dropped;
    {
        const auto first = FileOf("first");
        const auto second = FileOf(PatternText(100'000));
        taken = first;
        dropped = second;
        hasher_->Add({first, 0, 5});
        hasher_->Add({second, 0, 100'000});
    }
    EXPECT_TRUE(hasher_->Take().isRead);
    EXPECT_TRUE(taken.expired());
    hasher_->Drop(1);
    EXPECT_TRUE(dropped.expired());
}

TEST_P(ChunkHasherJobs, MayBeDestroyedWithChunksPending) {
    for (std::size_t i = 0; i < 64; ++i) {
        Add(i, 200'000);
    }
    ExpectNext(0, 200'000);
    hasher_.reset();
    EXPECT_EQ(file_.use_count(), 1);
}

TEST_P(ChunkHasherJobs, HasTheLanesOfTheEngineForEachJob) {
    EXPECT_EQ(hasher_->LaneCount(), GetParam().engine->LaneCount() * GetParam().jobs);
}

INSTANTIATE_TEST_SUITE_P(EveryVariant, ChunkHasherJobs, testing::ValuesIn(test::HashingVariants()),
                         [](const auto& instance) { return instance.param.name; });

TEST(ThreadedChunkHasherJobs, StartsAsManyWorkersAsItIsTold) {
    const ThreadedChunkHasher hasher(ProcessSha256Engine(), 3);
    EXPECT_EQ(hasher.WorkerCount(), 3U);
}

}  // namespace
}  // namespace sealkeeper
