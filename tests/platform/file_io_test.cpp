#include "platform/file_io.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_directory.h"
#include "support/whole_files.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

TEST(FileIo, ReadsWholeFiles) {
    const TempDirectory directory;
    for (const std::size_t size : test::kWholeFileSizes) {
        const Bytes bytes = test::Pattern(size);
        const std::string path = directory.WriteFile("a", std::string(bytes.begin(), bytes.end()));
        const auto read = ReadWholeFile(path);
        ASSERT_TRUE(read.has_value()) << size;
        EXPECT_EQ(*read, bytes) << size;
    }
}

TEST(FileIo, ReadsThroughALink) {
    const TempDirectory directory;
    directory.WriteFile("a", "content");
    fs::create_symlink("a", directory / "link");
    EXPECT_EQ(ReadWholeFile(directory / "link"), (Bytes{'c', 'o', 'n', 't', 'e', 'n', 't'}));
}

TEST(FileIo, DoesNotReadWhatIsNoFile) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    fs::create_symlink("fifo", directory / "link_fifo");
    fs::create_symlink("nowhere", directory / "link_dangling");
    for (const std::string& path :
         {std::string(), directory / "missing", directory.Path(), directory / "fifo",
          directory / "link_fifo", directory / "link_dangling"}) {
        EXPECT_EQ(ReadWholeFile(path), std::nullopt) << path;
    }
}

TEST(FileIo, TheNullDeviceIsAnEmptyFile) {
    EXPECT_EQ(ReadWholeFile("/dev/null"), Bytes{});
}

TEST(FileIo, UnreadableFileGivesNothing) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "content");
    fs::permissions(path, fs::perms::none);
    EXPECT_EQ(ReadWholeFile(path), std::nullopt);
}

TEST(FileIo, ReadsTheStartOfAFile) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "content");
    for (const std::uint64_t limit : std::vector<std::uint64_t>{0, 1, 6, 7, 8}) {
        const auto start = ReadFileStart(path, limit);
        ASSERT_TRUE(start.has_value()) << limit;
        EXPECT_EQ(std::string(start->bytes.begin(), start->bytes.end()),
                  std::string("content").substr(0, limit));
        EXPECT_EQ(start->fileSizeBytes, 7U);
    }
    fs::resize_file(path, 5'000'000'000);
    const auto start = ReadFileStart(path, 7);
    ASSERT_TRUE(start.has_value());
    EXPECT_EQ(start->fileSizeBytes, 5'000'000'000U);
    EXPECT_FALSE(ReadFileStart(directory.Path(), 0).has_value());
    EXPECT_FALSE(ReadFileStart(directory / "missing", 0).has_value());
}

TEST(FileIo, ReadsOnInOneOpening) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "content");
    auto file = OpenSizedFile(path);
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(file->sizeBytes, 7U);
    // The open file is read, whatever its name refers to by now.
    fs::remove(path);
    directory.WriteFile("a", "another file");
    Bytes bytes;
    for (const std::uint64_t limit : std::vector<std::uint64_t>{0, 3, 3, 1, 6, 8, 8}) {
        const std::size_t readBefore = bytes.size();
        ASSERT_TRUE(ReadOn(*file, limit, bytes)) << limit;
        const std::size_t expected = std::max<std::size_t>(limit, readBefore);
        EXPECT_EQ(std::string(bytes.begin(), bytes.end()),
                  std::string("content").substr(0, expected))
            << limit;
    }
}

TEST(FileIo, FileThatBecameShorterCannotBeReadOn) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", std::string(100'000, 'a'));
    auto file = OpenSizedFile(path);
    ASSERT_TRUE(file.has_value());
    Bytes bytes;
    EXPECT_TRUE(ReadOn(*file, 10, bytes));
    fs::resize_file(path, 50'000);
    EXPECT_FALSE(ReadOn(*file, 100'000, bytes));
}

TEST(FileIo, OpensNoSizedFile) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    for (const std::string& path :
         {std::string(), directory / "missing", directory.Path(), directory / "fifo"}) {
        EXPECT_FALSE(OpenSizedFile(path).has_value()) << path;
    }
}

TEST(FileIo, OpensForReadingAndTellsTheStatus) {
    const TempDirectory directory;
    const OpenedFile file = OpenForReading(directory.WriteFile("a", "12345"));
    ASSERT_TRUE(file.stream);
    EXPECT_EQ(file.status.type, FileType::Regular);
    EXPECT_EQ(file.status.sizeBytes, 5);
    EXPECT_EQ(std::fgetc(file.stream.get()), '1');
    EXPECT_NE(fcntl(fileno(file.stream.get()), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(FileIo, OpensADirectoryThatCannotBeRead) {
    const TempDirectory directory;
    const OpenedFile file = OpenForReading(directory.Path());
    ASSERT_TRUE(file.stream);
    EXPECT_EQ(file.status.type, FileType::Directory);
    EXPECT_EQ(std::fgetc(file.stream.get()), EOF);
}

TEST(FileIo, OpensADeviceWithoutASize) {
    const OpenedFile file = OpenForReading("/dev/zero");
    ASSERT_TRUE(file.stream);
    EXPECT_EQ(file.status.type, FileType::Other);
    EXPECT_EQ(file.status.sizeBytes, 0);
}

TEST(FileIo, DoesNotOpenForReading) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    directory.WriteFile("file", "");
    for (const std::string& path :
         {std::string(), directory / "missing", directory / "fifo", directory / "file/a"}) {
        const OpenedFile file = OpenForReading(path);
        EXPECT_FALSE(file.stream) << path;
        EXPECT_EQ(file.status.type, FileType::Missing) << path;
        EXPECT_EQ(file.status.sizeBytes, 0) << path;
    }
}

TEST(FileIo, LeavesNoDescriptorBehind) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    directory.WriteFile("file", "content");
    // The lowest free descriptor, which the next open will get.
    const auto lowestFree = [] {
        const int descriptor = dup(STDIN_FILENO);
        close(descriptor);
        return descriptor;
    };
    const int before = lowestFree();
    for (const std::string& path : {directory / "fifo", directory / "file", directory.Path()}) {
        static_cast<void>(OpenForReading(path));
        static_cast<void>(ReadWholeFile(path));
        EXPECT_EQ(lowestFree(), before) << path;
    }
}

}  // namespace
}  // namespace sealkeeper
