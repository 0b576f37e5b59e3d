#include "catalogue/hashing/file_hasher.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_test_support.h"
#include "catalogue/hashing/chunks.h"
#include "platform/text_encoding.h"
#include "support/descriptor_limit.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::DigestTexts;
using test::PatternText;
using test::Sha256Hex;
using test::TempDirectory;

std::vector<std::string> ExpectedDigests(const std::string& content) {
    std::vector<std::string> digests;
    for (std::size_t at = 0; at < content.size(); at += kChunkBytes) {
        digests.push_back(Sha256Hex(test::BytesOf(content.substr(at, kChunkBytes))));
    }
    return digests;
}

// Files of the given sizes, all different, and a hasher for them.
class Files {
  public:
    explicit Files(const std::vector<std::size_t>& sizes,
                   std::unique_ptr<ChunkHasher> chunks = MakeChunkHasher())
        : hasher_(
              sizes.size(), [this](std::size_t index) { return Open(index); }, std::move(chunks)) {
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            contents_.push_back(PatternText(sizes[i] + i).substr(i));
            paths_.push_back(directory_.WriteFile("f" + std::to_string(i), contents_.back()));
        }
    }

    [[nodiscard]] FileHasher& Hasher() { return hasher_; }
    [[nodiscard]] std::size_t OpenedCount() const { return openedCount_; }
    [[nodiscard]] const std::string& PathOf(std::size_t index) const { return paths_[index]; }

    // Moves to the next file, number `index`, and checks all its digests.
    void ExpectNextFile(std::size_t index) {
        const FileToHash& file = hasher_.NextFile();
        ASSERT_NE(file.file, nullptr) << index;
        std::vector<Sha256Digest> digests;
        for (std::uint64_t chunk = 0; chunk < file.chunkCount; ++chunk) {
            const HashedChunk hashed = hasher_.NextDigest();
            ASSERT_TRUE(hashed.isRead) << index;
            digests.push_back(hashed.digest);
        }
        EXPECT_EQ(DigestTexts(digests), ExpectedDigests(contents_[index])) << index;
    }

  private:
    FileToHash Open(std::size_t index) {
        // Each file is opened once, in order.
        EXPECT_EQ(index, openedCount_++);
        return OpenCollectedFile(Utf8ToWide(paths_[index]));
    }

    TempDirectory directory_;
    std::vector<std::string> contents_;
    std::vector<std::string> paths_;
    std::size_t openedCount_ = 0;
    FileHasher hasher_;
};

TEST(FileHasher, FilesOfAllSizesInTheirOrder) {
    std::vector<std::size_t> sizes = {1, 0, 63, 64, 65, kChunkBytes, 3, kChunkBytes + 1, 0};
    // Sizes around possible ends of a piece, whatever the size of pieces.
    for (std::size_t size = 1U << 12U; size <= 1U << 20U; size *= 2) {
        sizes.insert(sizes.end(), {size - 1, size, size + 1});
    }
    sizes.insert(sizes.end(), {5 * kChunkBytes + 65'537, kChunkBytes - 1, 127});
    Files files(sizes);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        files.ExpectNextFile(i);
    }
    EXPECT_EQ(files.OpenedCount(), sizes.size());
}

// The shorter file limits how much of the longer one is hashed with it, and so how much remains.
TEST(FileHasher, ShortFileBesideALongOne) {
    for (std::size_t size = 1U << 12U; size <= 1U << 20U; size *= 2) {
        for (const std::size_t missing : std::vector<std::size_t>{1, 64, 65, 128, 129}) {
            Files files({size - missing, 3 * size + 17});
            files.ExpectNextFile(0);
            files.ExpectNextFile(1);
        }
    }
}

TEST(FileHasher, ManySmallFiles) {
    std::vector<std::size_t> sizes;
    for (std::size_t i = 0; i < 1000; ++i) {
        sizes.push_back(i * 37 % 3000);
    }
    Files files(sizes);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        files.ExpectNextFile(i);
        // Some files are opened ahead, but not all.
        EXPECT_LE(files.OpenedCount(), i + 65);
    }
}

TEST(FileHasher, LooksAheadToSomeLargeFilesOnly) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("f", "");
    std::filesystem::resize_file(path, kChunkBytes);
    std::size_t openedCount = 0;
    FileHasher hasher(60, [&](std::size_t /*index*/) {
        ++openedCount;
        return OpenCollectedFile(Utf8ToWide(path));
    });
    static_cast<void>(hasher.NextFile());
    EXPECT_TRUE(hasher.NextDigest().isRead);
    // The files being hashed, and some more to read ahead.
    EXPECT_GE(openedCount, 16U);
    EXPECT_LE(openedCount, 48U);
}

// A disk reads many small files at a time.
TEST(FileHasher, LooksAheadToManySmallFiles) {
    Files files(std::vector<std::size_t>(100, 5));
    files.ExpectNextFile(0);
    EXPECT_GE(files.OpenedCount(), 60U);
}

TEST(FileHasher, OpensSmallFilesManyAtATimeInTheThreadThatHashes) {
    constexpr std::size_t kCount = 400;
    constexpr std::size_t kLeastAtATime = 16;
    Files files(std::vector<std::size_t>(kCount, 1000));
    std::size_t timesOpened = 0;
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::size_t before = files.OpenedCount();
        files.ExpectNextFile(i);
        if (files.OpenedCount() > before) {
            ++timesOpened;
        }
    }
    EXPECT_LE(timesOpened, kCount / kLeastAtATime);
}

// Empty files take no read-ahead, so only their number limits the look-ahead.
TEST(FileHasher, ManyEmptyFiles) {
    std::vector<std::size_t> sizes(300);
    sizes.front() = 5;
    Files files(sizes);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        files.ExpectNextFile(i);
        EXPECT_LE(files.OpenedCount(), i + 64);
    }
}

TEST(FileHasher, GivesUpTheRestOfAFile) {
    Files files({9 * kChunkBytes, 5, 2 * kChunkBytes, 7});
    EXPECT_EQ(files.Hasher().NextFile().chunkCount, 9U);
    EXPECT_TRUE(files.Hasher().NextDigest().isRead);
    files.ExpectNextFile(1);
    // Before any digest was taken.
    EXPECT_EQ(files.Hasher().NextFile().chunkCount, 2U);
    files.ExpectNextFile(3);
}

// Two files with more chunks than the look-ahead are given up. Their chunks leave room for those of
// the files after them.
void ExpectToLookAheadAfter(const std::function<FileToHash()>& openGivenUp) {
    const TempDirectory directory;
    // Small enough for all files to be in the look-ahead, large enough that few are hashed
    // meanwhile.
    const std::string content = PatternText(kChunkBytes / 8);
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", content));
    constexpr std::size_t kFileCount = 30;
    std::size_t openedCount = 0;
    FileHasher hasher(kFileCount, [&](std::size_t index) {
        ++openedCount;
        return index < 2 ? openGivenUp() : OpenCollectedFile(path);
    });
    for (std::size_t givenUp = 1; givenUp <= 2; ++givenUp) {
        static_cast<void>(hasher.NextFile());
        EXPECT_TRUE(hasher.NextDigest().isRead);
        EXPECT_EQ(openedCount, givenUp);
    }
    EXPECT_EQ(hasher.NextFile().chunkCount, 1U);
    EXPECT_EQ(test::Hex(hasher.NextDigest().digest), Sha256Hex(test::BytesOf(content)));
    EXPECT_EQ(openedCount, kFileCount);
}

TEST(FileHasher, LooksAheadAsFarAfterBytesThatWereGivenUp) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("f", "");
    std::filesystem::resize_file(path, 40 * kChunkBytes);
    ExpectToLookAheadAfter([&] { return OpenCollectedFile(Utf8ToWide(path)); });
}

TEST(FileHasher, LooksAheadAsFarAfterChunksThatWereGivenUp) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    ExpectToLookAheadAfter([&] {
        FileToHash file = OpenCollectedFile(path);
        // Past the end, where chunks have no bytes.
        file.chunkCount = 1000;
        return file;
    });
}

TEST(FileHasher, FewDescriptorsAreEnough) {
    const TempDirectory directory;
    std::vector<std::string> paths;
    for (int i = 0; i < 40; ++i) {
        paths.push_back(directory.WriteFile("f" + std::to_string(i), "hello"));
    }
    const test::ScopedDescriptorLimit limit;
    FileHasher hasher(paths.size(), [&](std::size_t index) {
        return OpenCollectedFile(Utf8ToWide(paths[index]));
    });
    for (const std::string& path : paths) {
        ASSERT_NE(hasher.NextFile().file, nullptr) << path;
        EXPECT_EQ(test::Hex(hasher.NextDigest().digest), test::kDigestOfHello);
        // The rest of the program needs descriptors too.
        const int spare = dup(STDOUT_FILENO);
        EXPECT_EQ(close(spare), 0);
    }
}

TEST(FileHasher, FileThatCannotBeOpenedIsNull) {
    FileHasher hasher(2, [](std::size_t index) {
        return OpenCollectedFile(index == 0 ? L"/no/such/file" : L"/no/other");
    });
    EXPECT_EQ(hasher.NextFile().file, nullptr);
    EXPECT_EQ(hasher.NextFile().file, nullptr);
}

TEST(FileHasher, OpensFilesInOrderAndTriesMissingOnesAgainAtTheirTurn) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    std::vector<std::size_t> firstAsked;
    std::vector<int> timesAsked(5, 0);
    FileHasher hasher(5, [&](std::size_t index) {
        if (++timesAsked[index] == 1) {
            firstAsked.push_back(index);
        }
        return OpenCollectedFile(index == 1 || index == 4 ? L"/no/such/file" : path);
    });
    for (const std::size_t index : std::vector<std::size_t>{0, 1, 2, 3, 4}) {
        const bool isThere = hasher.NextFile().file != nullptr;
        EXPECT_EQ(isThere, index != 1 && index != 4);
        EXPECT_TRUE(!isThere || hasher.NextDigest().isRead);
    }
    EXPECT_EQ(firstAsked, (std::vector<std::size_t>{0, 1, 2, 3, 4}));
    EXPECT_EQ(timesAsked, (std::vector<int>{1, 2, 1, 1, 2}));
}

// The parameter is the number of bytes left of two chunks.
class FileHasherOfAShortFile : public testing::TestWithParam<std::size_t> {};

TEST_P(FileHasherOfAShortFile, ChunkThatCannotBeReadLeavesTheOthersAlone) {
    TempDirectory directory;
    const std::string content = PatternText(2 * kChunkBytes);
    const std::vector<std::string> paths = {
        directory.WriteFile("short", content.substr(0, GetParam())),
        directory.WriteFile("whole", content)};
    FileHasher hasher(2, [&](std::size_t index) {
        FileToHash file = OpenCollectedFile(Utf8ToWide(paths[index]));
        file.sizeBytes = content.size();
        file.chunkCount = 2;
        return file;
    });
    EXPECT_EQ(hasher.NextFile().chunkCount, 2U);
    EXPECT_FALSE(hasher.NextDigest().isRead);
    EXPECT_FALSE(hasher.NextDigest().isRead);
    EXPECT_EQ(hasher.NextFile().chunkCount, 2U);
    const std::vector<Sha256Digest> digests = {hasher.NextDigest().digest,
                                               hasher.NextDigest().digest};
    EXPECT_EQ(DigestTexts(digests), ExpectedDigests(content));
}

// In the first piece of a chunk, in a later one, and at possible ends of pieces.
INSTANTIATE_TEST_SUITE_P(EverySize, FileHasherOfAShortFile,
                         testing::Values(0, 70'000, 1'048'576, 3'000'001, kChunkBytes - 1));

// Their number comes from the catalogue, so they must not all be allocated at once.
TEST(FileHasher, ChunksPastTheEndHaveNoBytes) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    FileHasher hasher(1, [&](std::size_t /*index*/) {
        FileToHash file = OpenCollectedFile(path);
        file.chunkCount = 0xFFFFFFFF;
        return file;
    });
    static_cast<void>(hasher.NextFile());
    EXPECT_EQ(test::Hex(hasher.NextDigest().digest), test::kDigestOfHello);
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(test::Hex(hasher.NextDigest().digest), Sha256Hex({}));
    }
}

TEST(FileHasher, PastTheLastChunkNothingIsRead) {
    Files files({5, 6, 7});
    files.ExpectNextFile(0);
    EXPECT_FALSE(files.Hasher().NextDigest().isRead);
    EXPECT_FALSE(files.Hasher().NextDigest().isRead);
    files.ExpectNextFile(1);
    files.ExpectNextFile(2);
    EXPECT_FALSE(files.Hasher().NextDigest().isRead);
}

TEST(FileHasher, ChunkCounts) {
    EXPECT_EQ(ChunkCountOf(0), 0U);
    EXPECT_EQ(ChunkCountOf(1), 1U);
    EXPECT_EQ(ChunkCountOf(kChunkBytes), 1U);
    EXPECT_EQ(ChunkCountOf(kChunkBytes + 1), 2U);
    EXPECT_EQ(ChunkCountOf(~std::uint64_t{0}), std::uint64_t{1} << 42U);
}

TEST(FileHasher, ChunkLengths) {
    EXPECT_EQ(ChunkLength(0, 5), 5U);
    EXPECT_EQ(ChunkLength(1, 5), 0U);
    EXPECT_EQ(ChunkLength(0, kChunkBytes), kChunkBytes);
    EXPECT_EQ(ChunkLength(1, kChunkBytes), 0U);
    EXPECT_EQ(ChunkLength(1, kChunkBytes + 1), 1U);
    constexpr std::uint64_t kMost = ~std::uint64_t{0};
    EXPECT_EQ(ChunkLength(kMost, 2 * kChunkBytes), 0U);
    EXPECT_EQ(ChunkLength(kMost, kMost), 0U);
    EXPECT_EQ(ChunkLength((std::uint64_t{1} << 42U) - 1, kMost), kChunkBytes - 1);
}

TEST(FileHasher, ChunkOffsets) {
    EXPECT_EQ(ChunkOffset(0, 5), 0U);
    EXPECT_EQ(ChunkOffset(1, 5), 5U);
    EXPECT_EQ(ChunkOffset(1, kChunkBytes), kChunkBytes);
    EXPECT_EQ(ChunkOffset(1, kChunkBytes + 1), kChunkBytes);
    EXPECT_EQ(ChunkOffset(2, kChunkBytes + 1), kChunkBytes + 1);
    EXPECT_EQ(ChunkOffset(~std::uint64_t{0}, 2 * kChunkBytes), 2 * kChunkBytes);
    // The first index whose byte offset does not fit into 64 bits.
    constexpr std::uint64_t kTooFar = std::uint64_t{1} << 42U;
    EXPECT_EQ(ChunkOffset(kTooFar, 5), 5U);
    EXPECT_EQ(ChunkOffset(kTooFar, ~std::uint64_t{0}), ~std::uint64_t{0});
    EXPECT_EQ(ChunkOffset(kTooFar - 1, ~std::uint64_t{0}), (kTooFar - 1) * kChunkBytes);
}

}  // namespace
}  // namespace sealkeeper
