#include "platform/file_descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::ReadFile;
using test::TempDirectory;

constexpr std::array<std::uint8_t, 2> kContent = {'h', 'i'};

bool IsOpenInProcess(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1;
}

TEST(FileDescriptor, ClosesWhenItGoes) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    int number = -1;
    {
        FileDescriptor descriptor;
        EXPECT_FALSE(descriptor.IsOpen());
        ASSERT_TRUE(descriptor.OpenForReading(path));
        EXPECT_TRUE(descriptor.IsOpen());
        number = descriptor.Get();
        EXPECT_NE(fcntl(number, F_GETFD) & FD_CLOEXEC, 0);
    }
    EXPECT_FALSE(IsOpenInProcess(number));
}

TEST(FileDescriptor, LeavesWhatItReleasedOpen) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    int number = -1;
    {
        FileDescriptor descriptor;
        ASSERT_TRUE(descriptor.OpenForReading(path));
        number = descriptor.Get();
        descriptor.Release();
        EXPECT_FALSE(descriptor.IsOpen());
    }
    EXPECT_TRUE(IsOpenInProcess(number));
    EXPECT_EQ(close(number), 0);
}

TEST(FileDescriptor, OpensDirectoriesAndFifosWithoutWaiting) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    for (const std::string& path : {directory.Path(), directory / "fifo"}) {
        FileDescriptor descriptor;
        EXPECT_TRUE(descriptor.OpenForReading(path)) << path;
    }
}

TEST(FileDescriptor, OpensNothingThatIsNotThere) {
    const TempDirectory directory;
    for (const std::string& path : {std::string(), directory / "missing"}) {
        FileDescriptor descriptor;
        EXPECT_FALSE(descriptor.OpenForReading(path)) << path;
        EXPECT_FALSE(descriptor.IsOpen()) << path;
    }
}

TEST(FileDescriptor, OpensForWritingWhatIsThereAsItIs) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    FileDescriptor descriptor;
    ASSERT_TRUE(descriptor.OpenForWriting(path));
    EXPECT_EQ(ReadFile(path), "12345");
    EXPECT_EQ(fcntl(descriptor.Get(), F_GETFL) & O_NONBLOCK, 0);
    EXPECT_NE(fcntl(descriptor.Get(), F_GETFD) & FD_CLOEXEC, 0);
    ASSERT_TRUE(descriptor.Write(kContent));
    EXPECT_EQ(ReadFile(path), "hi345");
}

TEST(FileDescriptor, TellsWhyNothingIsOpenedForWriting) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    const auto errorOf = [](const std::string& path) {
        FileDescriptor descriptor;
        errno = 0;
        EXPECT_FALSE(descriptor.OpenForWriting(path)) << path;
        return errno;
    };
    EXPECT_EQ(errorOf(directory / "missing"), ENOENT);
    EXPECT_EQ(errorOf(directory.Path()), EISDIR);
    EXPECT_EQ(errorOf(directory / "fifo"), ENXIO);
}

TEST(FileDescriptor, OpensTruncated) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    for (const std::string& opened : {path, directory / "new"}) {
        FileDescriptor descriptor;
        ASSERT_TRUE(descriptor.OpenTruncated(opened, 0600));
        ASSERT_TRUE(descriptor.Write(kContent));
        EXPECT_EQ(ReadFile(opened), "hi");
    }
}

TEST(FileDescriptor, CreatesOnlyWhatIsNotThere) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    std::filesystem::create_symlink("nowhere", directory / "link");
    for (const std::string& there : {path, directory / "link", directory.Path()}) {
        FileDescriptor descriptor;
        EXPECT_FALSE(descriptor.Create(there, 0600)) << there;
        EXPECT_EQ(errno, EEXIST) << there;
    }
    FileDescriptor descriptor;
    ASSERT_TRUE(descriptor.Create(directory / "new", 0600));
    ASSERT_TRUE(descriptor.Write(kContent));
    EXPECT_TRUE(descriptor.Synchronise());
    EXPECT_TRUE(descriptor.Close());
    EXPECT_FALSE(descriptor.IsOpen());
    EXPECT_EQ(ReadFile(directory / "new"), "hi");
}

TEST(FileDescriptor, WhatIsNotOpenCannotBeWritten) {
    FileDescriptor descriptor;
    EXPECT_TRUE(descriptor.Write({}));
    EXPECT_FALSE(descriptor.Write(kContent));
    EXPECT_EQ(errno, EBADF);
    EXPECT_FALSE(descriptor.Synchronise());
    EXPECT_FALSE(descriptor.Close());
}

TEST(FileDescriptor, DuplicatesAnOpenOne) {
    FileDescriptor descriptor;
    EXPECT_FALSE(descriptor.Duplicate(-1));
    EXPECT_FALSE(descriptor.IsOpen());
    ASSERT_TRUE(descriptor.Duplicate(STDIN_FILENO));
    EXPECT_NE(descriptor.Get(), STDIN_FILENO);
    EXPECT_NE(fcntl(descriptor.Get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(FileDescriptor, CountsTheFreeOnes) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    FileDescriptor lowestFree;
    ASSERT_TRUE(lowestFree.Duplicate(STDIN_FILENO));
    rlimit limited = before;
    limited.rlim_cur = static_cast<rlim_t>(lowestFree.Get()) + 4;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limited), 0);
    for (const std::size_t most : std::vector<std::size_t>{0, 1, 2, 3, 4, 100}) {
        EXPECT_EQ(CountFreeDescriptors(most), std::min<std::size_t>(most, 3)) << most;
    }
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(CountFreeDescriptors(20), 20U);
}

}  // namespace
}  // namespace sealkeeper
