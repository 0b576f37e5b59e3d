// Files that change, are given up or cannot be opened ahead, however many threads hash.
#include "catalogue/hashing/file_hasher.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_test_support.h"
#include "catalogue/hashing/make_chunk_hasher.h"
#include "catalogue/hashing/sha256_engine.h"
#include "catalogue/hashing/sha256_kernels.h"
#include "platform/text_encoding.h"
#include "support/descriptor_limit.h"
#include "support/temp_directory.h"
#include "threads/hashing_variants.h"

namespace sealkeeper {
namespace {

using test::BytesOf;
using test::Hex;
using test::PatternText;
using test::Sha256Hex;
using test::TempDirectory;

// More files than are ever opened ahead, all different.
class FileHasherJobs : public testing::TestWithParam<test::HashingVariant> {
  protected:
    FileHasherJobs() {
        for (std::size_t i = 0; i < kFileCount; ++i) {
            contents_.push_back(PatternText(700 + 2 * i).substr(i));
            directory_.WriteFile(Name(i), contents_.back());
        }
    }

    static std::string Name(std::size_t index) { return "f" + std::to_string(index); }

    FileToHash Open(std::size_t index) {
        ++openedCount_;
        return OpenCollectedFile(Utf8ToWide(directory_ / Name(index)));
    }

    void ExpectNextFile(FileHasher& hasher, std::size_t index) const {
        ASSERT_NE(hasher.NextFile().file, nullptr) << index;
        EXPECT_EQ(Hex(hasher.NextDigest().digest), Sha256Hex(BytesOf(contents_[index]))) << index;
        EXPECT_FALSE(hasher.HasFileChanged()) << index;
    }

    static constexpr std::size_t kFileCount = 100;
    TempDirectory directory_;
    std::vector<std::string> contents_;
    std::size_t openedCount_ = 0;
};

TEST_P(FileHasherJobs, FilesThatChangeAheadAreHashedAsTheyAreAtTheirTurn) {
    FileHasher hasher(
        kFileCount, [&](std::size_t index) { return Open(index); }, GetParam().MakeHasher());
    ExpectNextFile(hasher, 0);
    contents_[2] = std::string(contents_[2].size(), 'r');
    directory_.RewriteFile(Name(2), contents_[2]);
    std::filesystem::remove(directory_ / Name(3));
    contents_[5] += "grown";
    directory_.RewriteFile(Name(5), contents_[5]);
    contents_[9] = "another";
    std::filesystem::rename(directory_.WriteFile("new", contents_[9]), directory_ / Name(9));
    for (std::size_t i = 1; i < kFileCount; ++i) {
        if (i == 3) {
            EXPECT_EQ(hasher.NextFile().file, nullptr);
        } else {
            ExpectNextFile(hasher, i);
        }
    }
}

TEST_P(FileHasherJobs, FileThatChangesAtItsTurnMayBeHashedAgain) {
    FileHasher hasher(
        kFileCount,
        [&](std::size_t index) {
            FileToHash file = Open(index);
            // The second chunk is past the end. A file of one chunk would be hashed by its turn.
            file.chunkCount = index == 1 ? 2 : 1;
            return file;
        },
        GetParam().MakeHasher());
    ExpectNextFile(hasher, 0);
    static_cast<void>(hasher.NextFile());
    contents_[1] = std::string(contents_[1].size(), 'r');
    directory_.RewriteFile(Name(1), contents_[1]);
    // A thread may have read the file at any time, also while it was empty.
    static_cast<void>(hasher.NextDigest());
    static_cast<void>(hasher.NextDigest());
    EXPECT_TRUE(hasher.HasFileChanged());
    static_cast<void>(hasher.OpenFileAgain());
    EXPECT_EQ(Hex(hasher.NextDigest().digest), Sha256Hex(BytesOf(contents_[1])));
    EXPECT_TRUE(hasher.NextDigest().isRead);
    EXPECT_FALSE(hasher.HasFileChanged());
    for (std::size_t i = 2; i < kFileCount; ++i) {
        ExpectNextFile(hasher, i);
    }
}

TEST_P(FileHasherJobs, FilesMayBeGivenUp) {
    FileHasher hasher(
        kFileCount,
        [&](std::size_t index) {
            FileToHash file = Open(index);
            // Most of these chunks are past the end.
            file.chunkCount = index % 10 == 0 ? 50 : 1;
            return file;
        },
        GetParam().MakeHasher());
    for (std::size_t i = 0; i < kFileCount; ++i) {
        if (i % 10 == 0) {
            EXPECT_EQ(hasher.NextFile().chunkCount, 50U);
            for (std::size_t taken = 0; taken < i / 10; ++taken) {
                EXPECT_TRUE(hasher.NextDigest().isRead) << i;
            }
        } else {
            ExpectNextFile(hasher, i);
        }
    }
}

TEST_P(FileHasherJobs, FewDescriptorsAreEnough) {
    const test::ScopedDescriptorLimit limit;
    FileHasher hasher(
        kFileCount, [&](std::size_t index) { return Open(index); }, GetParam().MakeHasher());
    for (std::size_t i = 0; i < kFileCount; ++i) {
        ExpectNextFile(hasher, i);
    }
    // None was opened in vain.
    EXPECT_EQ(openedCount_, kFileCount);
}

INSTANTIATE_TEST_SUITE_P(EveryVariant, FileHasherJobs, testing::ValuesIn(test::HashingVariants()),
                         [](const auto& instance) { return instance.param.name; });

// With one lane for each thread, so that fewer chunks are wanted than files may be open.
TEST(ThreadedFileHasherJobs, OpensSmallFilesOneAtATimeWhileOtherThreadsHash) {
    constexpr std::size_t kCount = 400;
    constexpr std::size_t kJobs = 2;
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    const Sha256Engine engine({&kPortableSha256Kernel});
    std::size_t openedCount = 0;
    FileHasher hasher(
        kCount,
        [&](std::size_t /*index*/) {
            ++openedCount;
            return OpenCollectedFile(path);
        },
        MakeChunkHasher(kJobs, engine));
    static_cast<void>(hasher.NextFile());
    EXPECT_EQ(Hex(hasher.NextDigest().digest), test::kDigestOfHello);
    for (std::size_t i = 1; i < kCount; ++i) {
        const std::size_t before = openedCount;
        static_cast<void>(hasher.NextFile());
        EXPECT_EQ(Hex(hasher.NextDigest().digest), test::kDigestOfHello);
        EXPECT_LE(openedCount, before + 1) << i;
    }
    EXPECT_EQ(openedCount, kCount);
}

}  // namespace
}  // namespace sealkeeper
