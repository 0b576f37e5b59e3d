#include "platform/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/temp_directory.h"
#include "support/whole_files.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

const Bytes kNew = {'n', 'e', 'w'};

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

std::size_t CountNames(const std::string& directory) {
    const fs::directory_iterator names(directory);
    return static_cast<std::size_t>(std::distance(begin(names), end(names)));
}

// Sets the file mode mask of the process while it exists.
class ScopedMask {
  public:
    explicit ScopedMask(mode_t mask) : before_(umask(mask)) {}
    ScopedMask(const ScopedMask&) = delete;
    ScopedMask& operator=(const ScopedMask&) = delete;
    ~ScopedMask() { umask(before_); }

  private:
    mode_t before_;
};

// A pipe. Closes its ends when it is destroyed.
class Pipe {
  public:
    Pipe() { EXPECT_EQ(pipe(ends_.data()), 0); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        close(ends_[0]);
        close(ends_[1]);
    }

    [[nodiscard]] std::string WriteEnd() const { return "/dev/fd/" + std::to_string(ends_[1]); }
    std::string Read() const {
        std::array<char, 64> buffer{};
        const ssize_t count = read(ends_[0], buffer.data(), buffer.size());
        return count < 0 ? std::string() : std::string(buffer.data(), static_cast<size_t>(count));
    }

  private:
    std::array<int, 2> ends_{};
};

TEST(OutputFile, WritesWholeFiles) {
    const TempDirectory directory;
    for (const std::size_t size : test::kWholeFileSizes) {
        const Bytes bytes = test::Pattern(size);
        EXPECT_EQ(WriteWholeFile(directory / "a", bytes), WriteOutcome::Written) << size;
        EXPECT_EQ(ReadFile(directory / "a"), std::string(bytes.begin(), bytes.end())) << size;
        EXPECT_EQ(CountNames(directory.Path()), 1U);
    }
}

TEST(OutputFile, ReplacesWhatIsThere) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", std::string(100'000, 'x'));
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(WriteWholeFile(path, {}), WriteOutcome::Written);
    EXPECT_EQ(ReadFile(path), "");
    EXPECT_EQ(CountNames(directory.Path()), 1U);
}

TEST(OutputFile, WritesIntoTheCurrentDirectory) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    EXPECT_EQ(WriteWholeFile("a", kNew), WriteOutcome::Written);
    EXPECT_EQ(WriteWholeFile("a", kNew), WriteOutcome::Written);
    EXPECT_EQ(ReadFile(directory / "a"), "new");
    EXPECT_EQ(CountNames(directory.Path()), 1U);
}

TEST(OutputFile, WhoReadsTheOldFileReadsOn) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "old");
    const int descriptor = open(path.c_str(), O_RDONLY);
    ASSERT_GE(descriptor, 0);
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    std::array<char, 3> read{};
    EXPECT_EQ(pread(descriptor, read.data(), read.size(), 0), 3);
    EXPECT_EQ(std::string(read.data(), read.size()), "old");
    close(descriptor);
}

TEST(OutputFile, OtherHardLinksKeepTheOldContent) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "old");
    fs::create_hard_link(path, directory / "game.pak");
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(ReadFile(directory / "game.pak"), "old");
}

TEST(OutputFile, LinksStayAndTheirTargetIsReplaced) {
    const TempDirectory directory;
    const std::string target = directory.WriteFile("elsewhere/a", "old");
    const std::string hardLink = directory / "elsewhere/b";
    fs::create_hard_link(target, hardLink);
    fs::create_symlink("elsewhere/a", directory / "relative");
    fs::create_symlink(target, directory / "absolute");
    fs::create_directory_symlink("elsewhere", directory / "dir");
    fs::create_symlink("dir/../relative", directory / "chain");
    for (const char* name : {"relative", "absolute", "chain", "dir/a"}) {
        fs::remove(hardLink);
        fs::create_hard_link(target, hardLink);
        const Bytes bytes(name, name + 3);
        EXPECT_EQ(WriteWholeFile(directory / name, bytes), WriteOutcome::Written) << name;
        EXPECT_EQ(ReadFile(target), std::string(name, 3));
        EXPECT_NE(ReadFile(hardLink), std::string(name, 3)) << "replaced, not written in place";
        EXPECT_EQ(CountNames(directory / "elsewhere"), 2U);
    }
    EXPECT_TRUE(fs::is_symlink(directory / "relative"));
    EXPECT_TRUE(fs::is_symlink(directory / "absolute"));
    EXPECT_TRUE(fs::is_symlink(directory / "chain"));
    EXPECT_EQ(CountNames(directory.Path()), 5U);
}

TEST(OutputFile, TargetOfADanglingLinkIsCreated) {
    const TempDirectory directory;
    fs::create_directory(directory / "elsewhere");
    fs::create_symlink("elsewhere/a", directory / "link");
    fs::create_symlink("link", directory / "chain");
    EXPECT_EQ(WriteWholeFile(directory / "chain", kNew), WriteOutcome::Written);
    EXPECT_EQ(ReadFile(directory / "elsewhere/a"), "new");
    EXPECT_TRUE(fs::is_symlink(directory / "link"));
    EXPECT_TRUE(fs::is_symlink(directory / "chain"));
}

TEST(OutputFile, NewFilesHaveTheModeThatTheMaskLeaves) {
    const TempDirectory directory;
    for (const mode_t mask : {mode_t{0}, mode_t{022}, mode_t{077}}) {
        const ScopedMask scoped(mask);
        fs::remove(directory / "a");
        EXPECT_EQ(WriteWholeFile(directory / "a", kNew), WriteOutcome::Written);
        EXPECT_EQ(ModeOf(directory / "a"), 0666U & ~mask);
    }
}

TEST(OutputFile, ReplacedFilesKeepTheirMode) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "old");
    const ScopedMask scoped(077);
    for (const mode_t mode :
         {mode_t{0600}, mode_t{0644}, mode_t{0666}, mode_t{0777}, mode_t{02750}, mode_t{01200}}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        // Some systems do not allow every bit to every user.
        const mode_t had = ModeOf(path);
        EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
        EXPECT_EQ(ModeOf(path), had);
    }
}

TEST(OutputFile, ReplacedFilesKeepTheirOwnerWhereTheSuperuserWrites) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs the superuser";
    }
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "old");
    ASSERT_EQ(chown(path.c_str(), 12, 34), 0);
    ASSERT_EQ(chmod(path.c_str(), 06755), 0);
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12U);
    EXPECT_EQ(status.st_gid, 34U);
    EXPECT_EQ(status.st_mode & 07777, 06755U);
}

TEST(OutputFile, TheLongestNamesCanBeWritten) {
    const TempDirectory directory;
    const std::string path = directory / std::string(255, 'n');
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(WriteWholeFile(directory / std::string(256, 'n'), kNew), WriteOutcome::OpenFailed);
    EXPECT_EQ(CountNames(directory.Path()), 1U);
}

TEST(OutputFile, CannotBeOpened) {
    const TempDirectory directory;
    directory.WriteFile("file", "content");
    fs::create_symlink("loop", directory / "loop");
    fs::create_symlink("missing/a", directory / "into_nowhere");
    fs::create_symlink("new/", directory / "no_name");
    const std::size_t before = CountNames(directory.Path());
    for (const std::string& path :
         {std::string(), directory.Path(), directory / "", directory / "missing/a",
          directory / "missing/", directory / "file/a", directory / "loop",
          directory / "into_nowhere", directory / "no_name"}) {
        EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::OpenFailed) << path;
    }
    EXPECT_EQ(CountNames(directory.Path()), before);
    EXPECT_EQ(ReadFile(directory / "file"), "content");
}

TEST(OutputFile, AFileThatMustNotBeWrittenStays) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "old");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::OpenFailed);
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_EQ(CountNames(directory.Path()), 1U);
}

TEST(OutputFile, AFileInADirectoryThatMustNotBeWrittenIsWrittenInPlace) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    const TempDirectory directory;
    const std::string path = directory.WriteFile("dir/a", "old content");
    fs::create_hard_link(path, directory / "link");
    ASSERT_EQ(chmod((directory / "dir").c_str(), 0555), 0);
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    EXPECT_EQ(WriteWholeFile(directory / "dir/b", kNew), WriteOutcome::OpenFailed);
    ASSERT_EQ(chmod((directory / "dir").c_str(), 0755), 0);
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(ReadFile(directory / "link"), "new");
}

TEST(OutputFile, TheDirectoryNeedNotBeReadable) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("dir/a", "old");
    fs::create_hard_link(path, directory / "link");
    ASSERT_EQ(chmod((directory / "dir").c_str(), 0333), 0);
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    ASSERT_EQ(chmod((directory / "dir").c_str(), 0755), 0);
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(ReadFile(directory / "link"), "old");
}

TEST(OutputFile, DevicesAreWrittenInPlace) {
    const mode_t before = ModeOf("/dev/null");
    EXPECT_EQ(WriteWholeFile("/dev/null", kNew), WriteOutcome::Written);
    EXPECT_EQ(ModeOf("/dev/null"), before);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(OutputFile, AFullDeviceFails) {
    if (!fs::exists("/dev/full")) {
        GTEST_SKIP() << "the system has no /dev/full";
    }
    for (const std::size_t size : test::kWholeFileSizes) {
        EXPECT_EQ(WriteWholeFile("/dev/full", test::Pattern(size)),
                  size == 0 ? WriteOutcome::Written : WriteOutcome::WriteFailed)
            << size;
    }
}

TEST(OutputFile, DoesNotWaitForTheReaderOfAFifo) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(WriteWholeFile(directory / "fifo", kNew), WriteOutcome::OpenFailed);
}

TEST(OutputFile, AFifoWithAReaderIsWritten) {
    const TempDirectory directory;
    const std::string path = directory / "fifo";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(WriteWholeFile(path, kNew), WriteOutcome::Written);
    std::array<char, 8> read{};
    EXPECT_EQ(::read(reader, read.data(), read.size()), 3);
    EXPECT_EQ(::read(reader, read.data(), read.size()), 0) << "the writer closed it";
    EXPECT_EQ(fs::status(path).type(), fs::file_type::fifo);
    close(reader);
}

TEST(OutputFile, AnOpenPipeIsWritten) {
    const Pipe pipe;
    EXPECT_EQ(WriteWholeFile(pipe.WriteEnd(), kNew), WriteOutcome::Written);
    EXPECT_EQ(pipe.Read(), "new");
}

// Whether writing to `path` goes into the file of the descriptor `console`. The calling process
// keeps that descriptor elsewhere.
bool WritesIntoTheFileOf(int console, const std::string& path) {
    const int descriptor = open(path.c_str(), O_WRONLY | O_APPEND);
    return dup2(descriptor, console) == console &&
           WriteWholeFile(path, kNew) == WriteOutcome::Written &&
           write(console, " and more", 9) == 9;
}

TEST(OutputFile, TheFileThatTheConsoleGoesToIsWrittenInPlace) {
    for (const int console : {STDOUT_FILENO, STDERR_FILENO}) {
        const TempDirectory directory;
        const std::string path = directory.WriteFile("console", "old content");
        EXPECT_EXIT(test::EndChild(WritesIntoTheFileOf(console, path) ? 0 : 1),
                    testing::ExitedWithCode(0), "");
        EXPECT_EQ(ReadFile(path), "new and more");
    }
}

TEST(OutputFile, WithoutAConsoleNoFileIsTakenForIt) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "old");
    fs::create_hard_link(path, directory / "link");
    const auto writes = [&path] {
        close(STDOUT_FILENO);
        close(STDERR_FILENO);
        return WriteWholeFile(path, kNew) == WriteOutcome::Written;
    };
    EXPECT_EXIT(test::EndChild(writes() ? 0 : 1), testing::ExitedWithCode(0), "");
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(ReadFile(directory / "link"), "old") << "replaced, not written in place";
}

// The system follows a link step by step. The resolved path may be longer than any path it accepts.
TEST(OutputFile, LinksWhoseTargetHasNoPathOfItsOwn) {
    const TempDirectory directory;
    // The system accepts each half as a path, but not the two together.
    std::string half;
    while (half.size() <= PATH_MAX / 2) {
        half += std::string(180, 'd') + "/";
    }
    fs::create_directories(directory / half);
    const std::string link = directory / (half + "link");
    fs::create_symlink(half + "a", link);
    EXPECT_EQ(WriteWholeFile(link, kNew), WriteOutcome::OpenFailed) << "where it leads is nothing";
    const ScopedCurrentDirectory here(directory / half);
    fs::create_directories(half);
    EXPECT_EQ(WriteWholeFile(link, kNew), WriteOutcome::OpenFailed) << "nothing is there yet";
    const int created = open((half + "a").c_str(), O_WRONLY | O_CREAT, 0600);
    ASSERT_GE(created, 0);
    close(created);
    EXPECT_EQ(WriteWholeFile(link, kNew), WriteOutcome::Written) << "in place";
    EXPECT_EQ(ReadFile(half + "a"), "new");
    // From here its path is short enough to remove it.
    fs::remove_all(half.substr(0, half.find('/')));
}

TEST(OutputFile, AnOpenFileWithoutANameIsWrittenInPlace) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "old content");
    const int descriptor = open(path.c_str(), O_RDWR);
    ASSERT_GE(descriptor, 0);
    fs::remove(path);
    // Linux names the open file like this.
    const std::string namesake = directory.WriteFile("a (deleted)", "other content");
    EXPECT_EQ(WriteWholeFile("/dev/fd/" + std::to_string(descriptor), kNew), WriteOutcome::Written);
    std::array<char, 8> read{};
    EXPECT_EQ(pread(descriptor, read.data(), read.size(), 0), 3);
    EXPECT_EQ(ReadFile(namesake), "other content");
    EXPECT_EQ(CountNames(directory.Path()), 1U);
    close(descriptor);
}

TEST(OutputFile, LeavesNoDescriptorBehind) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    directory.WriteFile("file", "old");
    // The lowest free descriptor, which the next open will get.
    const auto lowestFree = [] {
        const int descriptor = dup(STDIN_FILENO);
        close(descriptor);
        return descriptor;
    };
    const int before = lowestFree();
    for (const std::string& path : {directory / "file", directory / "new", directory / "fifo",
                                    directory.Path(), std::string("/dev/null")}) {
        static_cast<void>(WriteWholeFile(path, kNew));
        EXPECT_EQ(lowestFree(), before) << path;
    }
}

}  // namespace
}  // namespace sealkeeper
