#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "fault/fault_injection.h"
#include "platform/directory_listing.h"
#include "platform/file_io.h"
#include "platform/file_system.h"
#include "platform/glob.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::TempDirectory;
using Reach = ScopedFault::Reach;

// The lowest free descriptor, which the next open takes.
int LowestFreeDescriptor() {
    const int descriptor = dup(STDIN_FILENO);
    close(descriptor);
    return descriptor;
}

struct ReadFault {
    const char* name;
    Call call;
    std::size_t firstFailing;
    int value;
};

TEST(FileIoFaults, WholeFileThatCannotBeRead) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "content");
    const std::vector<ReadFault> faults = {
        {"open", Call::Open, 0, 0},
        {"fdopen", Call::Fdopen, 0, 0},
        {"seek to the end", Call::Fseeko, 0, 0},
        {"seek to the start", Call::Fseeko, 1, 0},
        {"read of nothing", Call::Fread, 0, 0},
        {"read of all but one byte", Call::Fread, 0, 6},
    };
    const int before = LowestFreeDescriptor();
    for (const ReadFault& failing : faults) {
        const ScopedFault fault(failing.call, failing.firstFailing, Reach::Once, failing.value);
        EXPECT_EQ(ReadWholeFile(path), std::nullopt) << failing.name;
        EXPECT_TRUE(fault.Struck()) << failing.name;
        EXPECT_EQ(LowestFreeDescriptor(), before) << failing.name;
    }
    EXPECT_TRUE(ReadWholeFile(path).has_value());
}

// Opening it would release a waiting writer, whose bytes would be lost.
TEST(FileIoFaults, FifoThatTakesTheFilesPlaceIsNotRead) {
    const TempDirectory directory;
    const std::string path = directory / "fifo";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int before = LowestFreeDescriptor();
    // As if it had been missing when its status was checked.
    const ScopedFault fault(Call::StatFailure, 0, Reach::Once, ENOENT);
    EXPECT_EQ(OpenForReading(path).stream, nullptr);
    EXPECT_TRUE(fault.Struck());
    EXPECT_EQ(LowestFreeDescriptor(), before);
}

TEST(FileIoFaults, SizeComesFromTheEndAndNotFromTheStatus) {
    const TempDirectory directory;
    const ScopedFault fault(Call::Fstat, 0, Reach::Once, -1);
    const auto bytes = ReadWholeFile(directory.WriteFile("a", "content"));
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(std::string(bytes->begin(), bytes->end()), "content");
}

TEST(FileIoFaults, DirectoryThatCannotBeOpened) {
    const TempDirectory directory;
    std::optional<DirectoryEntries> entries;
    CapturedOutput output;
    for (const int error : {ENOENT, ENOTDIR, EACCES, EPERM, ELOOP, ENAMETOOLONG}) {
        const ScopedFault fault(Call::Opendir, 0, Reach::Onwards, error);
        EXPECT_EQ(ReadDirectory(directory / "", entries), ResultCode::Ok) << error;
        EXPECT_FALSE(entries.has_value());
    }
    EXPECT_EQ(output.Take(), "");
    for (const int error : {EIO, ENOMEM, EMFILE, ENFILE, ESTALE}) {
        const ScopedFault fault(Call::Opendir, 0, Reach::Onwards, error);
        CapturedOutput reported;
        EXPECT_EQ(ReadDirectory("./some/", entries), ResultCode::SealkeeperIOError) << error;
        EXPECT_EQ(reported.Take(), "[Err!] Could not read the directory './some/': " +
                                       std::string(std::strerror(error)) + ".\n");
    }
}

TEST(FileIoFaults, DirectoryWhoseReadingFailsOnTheWay) {
    const TempDirectory directory;
    directory.WriteFile("a", "");
    std::optional<DirectoryEntries> entries;
    const CapturedOutput quiet;
    // At the two dots, at the file, and at the end.
    for (const std::size_t entry : {0U, 1U, 2U, 3U}) {
        const ScopedFault fault(Call::Readdir, entry, Reach::Once, EIO);
        EXPECT_EQ(ReadDirectory(directory / "", entries), ResultCode::SealkeeperIOError) << entry;
        EXPECT_FALSE(entries.has_value());
        EXPECT_TRUE(fault.Struck());
    }
    const ScopedFault fault(Call::Readdir, 1, Reach::Once, EACCES);
    EXPECT_EQ(ListDirectory(directory / "", entries), ResultCode::SealkeeperIOError);
    EXPECT_FALSE(entries.has_value());
}

TEST(FileIoFaults, DirectoryThatIsRemovedMeanwhileHasNoMoreEntries) {
    const TempDirectory directory;
    std::optional<DirectoryEntries> entries;
    CapturedOutput output;
    // After the two dots.
    const ScopedFault fault(Call::Readdir, 2, Reach::Once, ENOENT);
    EXPECT_EQ(ReadDirectory(directory / "", entries), ResultCode::Ok);
    EXPECT_TRUE(fault.Struck());
    ASSERT_TRUE(entries.has_value());
    EXPECT_EQ(entries->size(), 2U);
    EXPECT_EQ(output.Take(), "");
}

TEST(FileIoFaults, EntryThatCannotBeLookedAt) {
    const TempDirectory directory;
    directory.WriteFile("a", "");
    std::optional<DirectoryEntries> entries;
    const CapturedOutput quiet;
    const ScopedFault unknown(Call::ReaddirTypes);
    {
        const ScopedFault fault(Call::Lstat, 0, Reach::Onwards, EIO);
        EXPECT_EQ(ReadDirectory(directory / "", entries), ResultCode::SealkeeperIOError);
    }
    const ScopedFault fault(Call::Lstat, 0, Reach::Onwards, ENOENT);
    EXPECT_EQ(ReadDirectory(directory / "", entries), ResultCode::Ok);
    ASSERT_TRUE(entries.has_value());
    EXPECT_EQ(entries->front().type, EntryType::Other);
}

TEST(FileIoFaults, PathThatTheSystemFailsToLookAt) {
    FileStatus status;
    CapturedOutput output;
    const ScopedFault fault(Call::StatFailure, 0, Reach::Onwards, EIO);
    EXPECT_EQ(LookAtPath("./some", status), ResultCode::SealkeeperIOError);
    EXPECT_EQ(output.Take(), "[Err!] Could not look at './some': Input/output error.\n");
}

TEST(FileIoFaults, PatternThatTheSystemFailsToExpand) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("a/b", "");
    std::vector<std::string> paths;
    const CapturedOutput quiet;
    for (const std::size_t entry : {0U, 3U, 6U}) {
        const ScopedFault fault(Call::Readdir, entry, Reach::Once, EIO);
        EXPECT_EQ(ExpandGlobPattern("./*/*", paths), ResultCode::SealkeeperIOError) << entry;
        EXPECT_TRUE(fault.Struck());
    }
    {
        const ScopedFault fault(Call::Lstat, 0, Reach::Onwards, EIO);
        EXPECT_EQ(ExpandGlobPattern("./*/b", paths), ResultCode::SealkeeperIOError);
    }
    {
        const ScopedFault fault(Call::StatFailure, 0, Reach::Onwards, EIO);
        EXPECT_EQ(ExpandGlobPattern("./*/", paths), ResultCode::SealkeeperIOError);
    }
    const ScopedFault fault(Call::Fnmatch, 0, Reach::Onwards, -1);
    EXPECT_EQ(ExpandGlobPattern("./*", paths), ResultCode::SealkeeperIOError);
}

}  // namespace
}  // namespace sealkeeper
