#include "catalogue/hashing/file_hasher.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_test_support.h"
#include "catalogue/hashing/chunks.h"
#include "fault/fault_injection.h"
#include "platform/text_encoding.h"
#include "support/fake_clock.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CallCount;
using test::TempDirectory;

TEST(FileHasherFaults, FileThatIsGivenUpIsNotReadToItsEnd) {
    constexpr std::size_t kChunkCount = 50;
    const TempDirectory directory;
    const std::vector<std::string> paths = {directory.WriteFile("long", ""),
                                            directory.WriteFile("short", "hello")};
    std::filesystem::resize_file(paths[0], kChunkCount * kChunkBytes);
    FileHasher hasher(paths.size(), [&](std::size_t index) {
        return OpenCollectedFile(Utf8ToWide(paths[index]));
    });
    test::ResetCallCount(Call::ReadChunk);
    EXPECT_EQ(hasher.NextFile().chunkCount, kChunkCount);
    EXPECT_TRUE(hasher.NextDigest().isRead);
    EXPECT_EQ(hasher.NextFile().chunkCount, 1U);
    EXPECT_EQ(test::Hex(hasher.NextDigest().digest), test::kDigestOfHello);
    EXPECT_LT(CallCount(Call::ReadChunk), kChunkCount);
}

// These calls and no others, each exactly once.
TEST(FileHasherFaults, FileOfOneChunkIsLookedAtOpenedReadAndLookedAtAgain) {
    constexpr std::size_t kFileCount = 10;
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    FileHasher hasher(kFileCount, [&](std::size_t /*index*/) { return OpenCollectedFile(path); });
    for (const Call call : {Call::Stat, Call::Open, Call::ReadChunk, Call::Fstat}) {
        test::ResetCallCount(call);
    }
    for (std::size_t file = 0; file < kFileCount; ++file) {
        static_cast<void>(hasher.NextFile());
        EXPECT_EQ(test::Hex(hasher.NextDigest().digest), test::kDigestOfHello);
        EXPECT_FALSE(hasher.HasFileChanged());
    }
    for (const Call call : {Call::Stat, Call::Open, Call::ReadChunk, Call::Fstat}) {
        EXPECT_EQ(CallCount(call), kFileCount);
    }
}

TEST(FileHasherFaults, FileWithoutChunksIsNotRead) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    FileHasher hasher(3, [&](std::size_t index) {
        FileToHash file = OpenCollectedFile(path);
        file.chunkCount = index == 1 ? 0 : 1;
        return file;
    });
    test::ResetCallCount(Call::ReadChunk);
    for (const std::uint64_t chunkCount : std::vector<std::uint64_t>{1, 0, 1}) {
        ASSERT_EQ(hasher.NextFile().chunkCount, chunkCount);
        if (chunkCount > 0) {
            EXPECT_EQ(test::Hex(hasher.NextDigest().digest), test::kDigestOfHello);
        }
    }
    EXPECT_EQ(CallCount(Call::ReadChunk), 2U);
}

TEST(FileHasherFaults, ChunkThatCannotBeReadStopsTheReadingOfItsFile) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    FileHasher hasher(1, [&](std::size_t /*index*/) {
        FileToHash file = OpenCollectedFile(path);
        file.chunkCount = 200;
        file.sizeBytes = file.chunkCount * kChunkBytes;
        return file;
    });
    test::ResetCallCount(Call::ReadChunk);
    static_cast<void>(hasher.NextFile());
    for (std::size_t asked = 1; asked <= 5; ++asked) {
        EXPECT_FALSE(hasher.NextDigest().isRead);
        EXPECT_EQ(CallCount(Call::ReadChunk), asked);
    }
}

TEST(FileHasherFaults, FileAheadThatCannotBeOpenedIsNotRead) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    const test::ScopedFault fault(Call::Open, 1);
    FileHasher hasher(2, [&](std::size_t /*index*/) { return OpenCollectedFile(path); });
    static_cast<void>(hasher.NextFile());
    EXPECT_TRUE(hasher.NextDigest().isRead);
    EXPECT_TRUE(fault.Struck());
    const FileToHash& second = hasher.NextFile();
    EXPECT_EQ(second.file, nullptr);
    EXPECT_EQ(second.chunkCount, 0U);
    EXPECT_EQ(second.status.sizeBytes, 5);
    EXPECT_FALSE(hasher.HasFileChanged());
}

TEST(FileHasherFaults, WhatIsNoFileIsNotOpened) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    test::ResetCallCount(Call::Open);
    EXPECT_EQ(OpenCollectedFile(Utf8ToWide(directory / "fifo")).file, nullptr);
    EXPECT_EQ(CallCount(Call::Open), 0U);
}

// The lease holder may have changed the file.
TEST(FileHasherFaults, FileThatHadToBeWaitedForIsLookedAtAgain) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    const test::ScopedFault before(Call::Stat, 0, test::ScopedFault::Reach::Once, 99);
    const test::ScopedFault held(Call::Open, 0, test::ScopedFault::Reach::Once, EWOULDBLOCK);
    const FileToHash file = OpenCollectedFile(path);
    EXPECT_TRUE(before.Struck());
    EXPECT_TRUE(held.Struck());
    ASSERT_NE(file.file, nullptr);
    EXPECT_EQ(file.status.sizeBytes, 5);
    EXPECT_EQ(file.sizeBytes, 5U);
}

// Advice on other systems cannot be counted here.
#ifdef POSIX_FADV_WILLNEED

TEST(FileHasherFaults, TellsTheSystemOfTheFilesAhead) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    FileHasher hasher(10, [&](std::size_t /*index*/) { return OpenCollectedFile(path); });
    test::ResetCallCount(Call::Advise);
    static_cast<void>(hasher.NextFile());
    EXPECT_TRUE(hasher.NextDigest().isRead);
    EXPECT_EQ(CallCount(Call::Advise), 10U);
}

TEST(FileHasherFaults, TellsTheSystemOfEachChunkOnce) {
    // As many chunks as are advised however fast reads are.
    constexpr std::size_t kChunkCount = 16;
    ASSERT_EQ(kChunkCount * InputFile::ReadAheadSteps(kChunkBytes), ReadAheadPolicy::kStepsAtFirst);
    const TempDirectory directory;
    const std::string path = directory.WriteFile("long", "");
    std::filesystem::resize_file(path, kChunkCount * kChunkBytes);
    FileHasher hasher(1,
                      [&](std::size_t /*index*/) { return OpenCollectedFile(Utf8ToWide(path)); });
    test::ResetCallCount(Call::Advise);
    static_cast<void>(hasher.NextFile());
    EXPECT_TRUE(hasher.NextDigest().isRead);
    // More than are being hashed at the time.
    EXPECT_GE(CallCount(Call::Advise), 8 * InputFile::ReadAheadSteps(kChunkBytes));
    for (std::size_t chunk = 1; chunk < kChunkCount; ++chunk) {
        EXPECT_TRUE(hasher.NextDigest().isRead);
    }
    EXPECT_EQ(CallCount(Call::Advise), ReadAheadPolicy::kStepsAtFirst);
}

TEST(FileHasherFaults, TellsTheSystemOfNoMoreWhereNothingIsWaitedFor) {
    // Reads take no time.
    const test::FakeClock clock;
    const TempDirectory directory;
    const std::string path = directory.WriteFile("long", "");
    std::filesystem::resize_file(path, 20 * kChunkBytes);
    FileHasher hasher(1,
                      [&](std::size_t /*index*/) { return OpenCollectedFile(Utf8ToWide(path)); });
    test::ResetCallCount(Call::Advise);
    static_cast<void>(hasher.NextFile());
    for (std::size_t chunk = 0; chunk < 20; ++chunk) {
        EXPECT_TRUE(hasher.NextDigest().isRead);
    }
    EXPECT_EQ(CallCount(Call::Advise), ReadAheadPolicy::kStepsAtFirst);
}

TEST(FileHasherFaults, AdviceThatIsRefusedChangesNothing) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    const test::ScopedFault fault(Call::Advise);
    FileHasher hasher(1, [&](std::size_t /*index*/) { return OpenCollectedFile(path); });
    static_cast<void>(hasher.NextFile());
    EXPECT_EQ(test::Hex(hasher.NextDigest().digest), test::kDigestOfHello);
    EXPECT_TRUE(fault.Struck());
}

#endif

TEST(FileHasherFaults, FileOfANegativeSizeHasNoBytes) {
    const TempDirectory directory;
    const std::wstring path = Utf8ToWide(directory.WriteFile("f", "hello"));
    const test::ScopedFault fault(Call::Stat, 0, test::ScopedFault::Reach::Once, -1);
    const FileToHash file = OpenCollectedFile(path);
    EXPECT_TRUE(fault.Struck());
    ASSERT_NE(file.file, nullptr);
    EXPECT_EQ(file.status.sizeBytes, -1);
    EXPECT_EQ(file.sizeBytes, 0U);
    EXPECT_EQ(file.chunkCount, 0U);
}

}  // namespace
}  // namespace sealkeeper
