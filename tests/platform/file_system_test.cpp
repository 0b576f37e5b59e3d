#include "platform/file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

// One entry of each kind.
class FileSystemTest : public ::testing::Test {
  protected:
    FileSystemTest() {
        directory_.WriteFile("file", "12345");
        directory_.WriteFile("empty", "");
        directory_.WriteFile("dir/inner", "");
        fs::create_symlink("file", directory_ / "link_file");
        fs::create_directory_symlink("dir", directory_ / "link_dir");
        fs::create_symlink("nowhere", directory_ / "link_dangling");
        fs::create_symlink("link_loop", directory_ / "link_loop");
        EXPECT_EQ(mkfifo((directory_ / "fifo").c_str(), 0600), 0);
    }

    TempDirectory directory_;
};

TEST_F(FileSystemTest, TypesFollowLinks) {
    EXPECT_EQ(GetFileType(directory_ / "file"), FileType::Regular);
    EXPECT_EQ(GetFileType(directory_ / "empty"), FileType::Regular);
    EXPECT_EQ(GetFileType(directory_ / "link_file"), FileType::Regular);
    EXPECT_EQ(GetFileType(directory_ / "dir"), FileType::Directory);
    EXPECT_EQ(GetFileType(directory_ / "dir/"), FileType::Directory);
    EXPECT_EQ(GetFileType(directory_ / "link_dir"), FileType::Directory);
    EXPECT_EQ(GetFileType(directory_ / "fifo"), FileType::Fifo);
    EXPECT_EQ(GetFileType("/dev/null"), FileType::Other);
}

TEST_F(FileSystemTest, MissingLeavesTheReasonInErrno) {
    const auto errorOf = [](const std::string& path) {
        errno = 0;
        EXPECT_EQ(GetFileType(path), FileType::Missing) << path;
        return errno;
    };
    EXPECT_EQ(errorOf(""), ENOENT);
    EXPECT_EQ(errorOf(directory_ / "missing"), ENOENT);
    EXPECT_EQ(errorOf(directory_ / "link_dangling"), ENOENT);
    EXPECT_EQ(errorOf(directory_ / "file/x"), ENOTDIR);
    EXPECT_EQ(errorOf(directory_ / "link_loop"), ELOOP);
    EXPECT_EQ(errorOf(directory_ / std::string(1000, 'x')), ENAMETOOLONG);
}

TEST_F(FileSystemTest, FollowsLinksToWhatIsNone) {
    fs::create_symlink(directory_ / "link_file", directory_ / "link_absolute");
    fs::create_symlink("../link_absolute", directory_ / "dir/link_up");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"file", "file"},
        {"missing", "missing"},
        {"missing/a", "missing/a"},
        {"dir", "dir"},
        {"link_file", "file"},
        {"link_dangling", "nowhere"},
        {"link_absolute", "file"},
        {"dir/link_up", "file"},
        // Links inside the path stay.
        {"link_dir/inner", "link_dir/inner"},
    };
    for (const auto& [path, end] : cases) {
        const auto followed = FollowLinks(directory_ / path);
        ASSERT_TRUE(followed.has_value()) << path;
        EXPECT_EQ(*followed, directory_ / end);
    }
    EXPECT_EQ(FollowLinks(""), "");
}

TEST_F(FileSystemTest, LinksThatLeadNowhereAreNotFollowed) {
    EXPECT_EQ(FollowLinks(directory_ / "link_loop"), std::nullopt);
    EXPECT_EQ(FollowLinks(directory_ / "file/x"), std::nullopt);
    EXPECT_EQ(FollowLinks(directory_ / std::string(1000, 'x')), std::nullopt);
}

TEST_F(FileSystemTest, RelativeLinksAreTakenFromTheirDirectory) {
    const ScopedCurrentDirectory here(directory_.Path());
    EXPECT_EQ(FollowLinks("link_file"), "file");
    EXPECT_EQ(FollowLinks("./link_file"), "./file");
}

TEST_F(FileSystemTest, Sizes) {
    EXPECT_EQ(StatusOfPath(directory_ / "file").sizeBytes, 5);
    EXPECT_EQ(StatusOfPath(directory_ / "link_file").sizeBytes, 5);
    EXPECT_EQ(StatusOfPath(directory_ / "empty").sizeBytes, 0);
    EXPECT_EQ(StatusOfPath(directory_ / "missing").sizeBytes, 0);
    EXPECT_EQ(StatusOfPath(directory_ / "link_dangling").sizeBytes, 0);
    EXPECT_EQ(StatusOfPath("").sizeBytes, 0);
    EXPECT_EQ(StatusOfPath("/dev/null").sizeBytes, 0);
    fs::resize_file(directory_ / "file", 5'000'000'000);
    EXPECT_EQ(StatusOfPath(directory_ / "file").sizeBytes, std::int64_t{5'000'000'000});
}

TEST_F(FileSystemTest, AFifoHasNoSizeWhateverWaitsInIt) {
    const int descriptor = open((directory_ / "fifo").c_str(), O_RDWR | O_NONBLOCK);
    ASSERT_GE(descriptor, 0);
    ASSERT_EQ(write(descriptor, "abc", 3), 3);
    EXPECT_EQ(StatusOfPath(directory_ / "fifo").sizeBytes, 0);
    close(descriptor);
}

TEST_F(FileSystemTest, StatusOfOpenFiles) {
    const auto statusOf = [](const std::string& path) {
        const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK);
        EXPECT_GE(descriptor, 0) << path;
        const FileStatus status = StatusOfOpenFile(descriptor);
        close(descriptor);
        return status;
    };
    EXPECT_EQ(statusOf(directory_ / "file").type, FileType::Regular);
    EXPECT_EQ(statusOf(directory_ / "file").sizeBytes, 5);
    EXPECT_EQ(statusOf(directory_ / "empty").sizeBytes, 0);
    EXPECT_EQ(statusOf(directory_ / "dir").type, FileType::Directory);
    EXPECT_EQ(statusOf(directory_ / "dir").sizeBytes, StatusOfPath(directory_ / "dir").sizeBytes);
    EXPECT_EQ(statusOf(directory_ / "fifo").type, FileType::Fifo);
    EXPECT_EQ(statusOf("/dev/null").type, FileType::Other);
    EXPECT_EQ(statusOf("/dev/null").sizeBytes, 0);
    fs::resize_file(directory_ / "file", 5'000'000'000);
    EXPECT_EQ(statusOf(directory_ / "file").sizeBytes, std::int64_t{5'000'000'000});
}

TEST_F(FileSystemTest, StatusOfNoOpenFile) {
    EXPECT_EQ(StatusOfOpenFile(-1).type, FileType::Unknown);
    EXPECT_EQ(StatusOfOpenFile(-1).sizeBytes, 0);
}

TEST_F(FileSystemTest, ResolvesPaths) {
    const std::string& root = directory_.Path();
    EXPECT_EQ(ResolvePath(root + "/dir/"), root + "/dir");
    EXPECT_EQ(ResolvePath(root + "/dir/../dir/./inner"), root + "/dir/inner");
    EXPECT_EQ(ResolvePath(root + "/link_dir/inner"), root + "/dir/inner");
    EXPECT_EQ(ResolvePath("/"), "/");
    const ScopedCurrentDirectory here(root);
    EXPECT_EQ(ResolvePath("."), root);
    EXPECT_EQ(ResolvePath("link_file"), root + "/file");
}

TEST_F(FileSystemTest, DoesNotResolveWhatIsNotThere) {
    EXPECT_EQ(ResolvePath(""), std::nullopt);
    EXPECT_EQ(ResolvePath(directory_ / "missing"), std::nullopt);
    EXPECT_EQ(ResolvePath(directory_ / "link_dangling"), std::nullopt);
    EXPECT_EQ(ResolvePath(directory_ / "link_loop"), std::nullopt);
    EXPECT_EQ(ResolvePath(directory_ / "file/.."), std::nullopt);
}

TEST_F(FileSystemTest, TellsTheCurrentDirectory) {
    const ScopedCurrentDirectory here(directory_ / "dir");
    EXPECT_EQ(CurrentDirectory(), directory_ / "dir");
}

TEST_F(FileSystemTest, CurrentDirectoryHasAtMost1023Bytes) {
    const ScopedCurrentDirectory here(directory_.Path());
    constexpr std::size_t kLongest = 1023;
    std::size_t length = directory_.Path().size();
    while (length < kLongest) {
        // The rest must leave space for a separator and at least one byte, in this round and the
        // next.
        std::size_t name = std::min<std::size_t>(kLongest - length - 1, 200);
        if (kLongest - length - 1 - name == 1) {
            --name;
        }
        const std::string step(name, 'd');
        ASSERT_EQ(mkdir(step.c_str(), 0700), 0);
        ASSERT_EQ(chdir(step.c_str()), 0);
        length += 1 + name;
    }
    const auto longest = CurrentDirectory();
    ASSERT_TRUE(longest.has_value());
    EXPECT_EQ(longest->size(), kLongest);

    // One byte longer: the last directory has a longer name.
    const std::string last = longest->substr(longest->rfind('/') + 1);
    const std::string longer = "../" + std::string(last.size() + 1, 'e');
    ASSERT_EQ(mkdir(longer.c_str(), 0700), 0);
    ASSERT_EQ(chdir(longer.c_str()), 0);
    EXPECT_EQ(CurrentDirectory(), std::nullopt);
}

TEST_F(FileSystemTest, ARemovedCurrentDirectoryCannotBeTold) {
    fs::create_directory(directory_ / "gone");
    const ScopedCurrentDirectory here(directory_.Path());
    ASSERT_EQ(chdir("gone"), 0);
    ASSERT_EQ(rmdir((directory_ / "gone").c_str()), 0);
    EXPECT_EQ(CurrentDirectory(), std::nullopt);
}

TEST_F(FileSystemTest, CreatesDirectoriesWithTheirParents) {
    const std::string nested = directory_ / "a/b/c/";
    EXPECT_TRUE(CreateDirectories(nested));
    EXPECT_TRUE(fs::is_directory(nested));
    EXPECT_TRUE(CreateDirectories(nested));
    EXPECT_TRUE(CreateDirectories(directory_ / "a/b/d"));
    EXPECT_TRUE(fs::is_directory(directory_ / "a/b/d"));
    EXPECT_TRUE(CreateDirectories(directory_ / "e//f/./g//"));
    EXPECT_TRUE(fs::is_directory(directory_ / "e/f/g"));
    EXPECT_TRUE(CreateDirectories(directory_ / "link_dir/h"));
    EXPECT_TRUE(fs::is_directory(directory_ / "dir/h"));
    EXPECT_TRUE(CreateDirectories("/"));
    EXPECT_TRUE(CreateDirectories(directory_.Path()));
    EXPECT_TRUE(CreateDirectories(directory_ / "link_dir"));
}

TEST_F(FileSystemTest, CreatesRelativeDirectories) {
    const ScopedCurrentDirectory here(directory_.Path());
    EXPECT_TRUE(CreateDirectories("r"));
    EXPECT_TRUE(CreateDirectories("r2/s/"));
    EXPECT_TRUE(CreateDirectories("./r3/../r4"));
    EXPECT_TRUE(fs::is_directory("r") && fs::is_directory("r2/s"));
    EXPECT_TRUE(fs::is_directory("r3") && fs::is_directory("r4"));
}

TEST_F(FileSystemTest, DoesNotCreateDirectoriesWhereSomethingElseIs) {
    EXPECT_FALSE(CreateDirectories(""));
    EXPECT_FALSE(CreateDirectories(directory_ / "file"));
    EXPECT_FALSE(CreateDirectories(directory_ / "file/"));
    EXPECT_FALSE(CreateDirectories(directory_ / "file/x"));
    EXPECT_FALSE(CreateDirectories(directory_ / "link_file"));
    EXPECT_FALSE(CreateDirectories(directory_ / "link_dangling"));
    EXPECT_FALSE(CreateDirectories(directory_ / "fifo"));
    EXPECT_EQ(StatusOfPath(directory_ / "file").sizeBytes, 5);
}

TEST_F(FileSystemTest, CreatedDirectoriesAreOpenAsFarAsTheMaskAllows) {
    const mode_t previous = umask(0027);
    EXPECT_TRUE(CreateDirectories(directory_ / "m/n"));
    umask(previous);
    for (const char* name : {"m", "m/n"}) {
        EXPECT_EQ(fs::status(directory_ / name).permissions(), static_cast<fs::perms>(0750))
            << name;
    }
}

TEST(FileSystem, StatusTellsWhichFileItIs) {
    const TempDirectory directory;
    const FileStatus first = StatusOfPath(directory.WriteFile("a", "x"));
    const FileStatus second = StatusOfPath(directory.WriteFile("b", "x"));
    EXPECT_EQ(first.device, second.device);
    EXPECT_NE(first.device, 0U);
    EXPECT_NE(first.serial, second.serial);
    EXPECT_EQ(StatusOfPath(directory / "a"), first);
}

TEST(FileStatus, DiffersByEachThatItTells) {
    const FileStatus status{FileType::Regular, 1, 2, 3, 4, 5, 6};
    EXPECT_EQ(status, FileStatus(status));
    std::vector<FileStatus> others(7, status);
    others[0].type = FileType::Other;
    ++others[1].sizeBytes;
    ++others[2].device;
    ++others[3].serial;
    ++others[4].linkCount;
    ++others[5].changeSeconds;
    ++others[6].changeNanoseconds;
    for (const FileStatus& other : others) {
        EXPECT_FALSE(status == other);
    }
}

}  // namespace
}  // namespace sealkeeper
