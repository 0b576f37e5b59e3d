#include "platform/temporary_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

constexpr std::array<std::uint8_t, 2> kWritten = {'h', 'i'};

std::vector<std::string> NamesIn(const TempDirectory& directory) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory.Path())) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(TemporaryFile, IsHiddenAndHasANameAsShortAsThatOfACatalogue) {
    const TempDirectory directory;
    TemporaryFile file;
    ASSERT_TRUE(file.CreateIn(directory / "", 0600));
    const std::vector<std::string> names = NamesIn(directory);
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].size(), std::string("base.bin").size());
    EXPECT_TRUE(names[0].starts_with(".sk")) << names[0];
}

TEST(TemporaryFile, HasItsModeLessTheMask) {
    const TempDirectory directory;
    const mode_t before = umask(027);
    TemporaryFile file;
    EXPECT_TRUE(file.CreateIn(directory / "", 0666));
    umask(before);
    struct stat status {};
    ASSERT_EQ(fstat(file.Descriptor().Get(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST(TemporaryFile, GoesWithItsOwner) {
    const TempDirectory directory;
    {
        TemporaryFile file;
        ASSERT_TRUE(file.CreateIn(directory / "", 0600));
        EXPECT_FALSE(NamesIn(directory).empty());
    }
    EXPECT_TRUE(NamesIn(directory).empty());
}

TEST(TemporaryFile, TakesThePlaceOfAnotherOne) {
    const TempDirectory directory;
    directory.WriteFile("a", "old");
    {
        TemporaryFile file;
        ASSERT_TRUE(file.CreateIn(directory / "", 0600));
        ASSERT_TRUE(file.Descriptor().Write(kWritten));
        ASSERT_TRUE(file.RenameTo(directory / "a"));
    }
    EXPECT_EQ(NamesIn(directory), std::vector<std::string>{"a"});
    EXPECT_EQ(ReadFile(directory / "a"), "hi");
}

TEST(TemporaryFile, LeavesWhatItCannotReplace) {
    const TempDirectory directory;
    directory.WriteFile("dir/a", "old");
    {
        TemporaryFile file;
        ASSERT_TRUE(file.CreateIn(directory / "", 0600));
        EXPECT_FALSE(file.RenameTo(directory / "dir"));
    }
    EXPECT_EQ(NamesIn(directory), std::vector<std::string>{"dir"});
    EXPECT_EQ(ReadFile(directory / "dir/a"), "old");
}

TEST(TemporaryFile, HasANameOfItsOwn) {
    const TempDirectory directory;
    std::array<TemporaryFile, 20> files;
    for (TemporaryFile& file : files) {
        ASSERT_TRUE(file.CreateIn(directory / "", 0600));
    }
    EXPECT_EQ(NamesIn(directory).size(), files.size());
}

TEST(TemporaryFile, DoesNotFollowALinkOfItsName) {
    const TempDirectory directory;
    std::string name;
    {
        TemporaryFile file;
        ASSERT_TRUE(file.CreateIn(directory / "", 0600));
        name = NamesIn(directory).front();
    }
    fs::create_symlink("elsewhere", directory / name);
    TemporaryFile file;
    ASSERT_TRUE(file.CreateIn(directory / "", 0600));
    EXPECT_FALSE(fs::exists(directory / "elsewhere"));
    EXPECT_EQ(NamesIn(directory).size(), 2U);
}

TEST(TemporaryFile, LiesInTheCurrentDirectoryWithoutAnother) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    TemporaryFile file;
    ASSERT_TRUE(file.CreateIn("", 0600));
    EXPECT_EQ(NamesIn(directory).size(), 1U);
}

TEST(TemporaryFile, TellsWhyItCannotBeCreated) {
    const TempDirectory directory;
    TemporaryFile file;
    EXPECT_FALSE(file.CreateIn(directory / "missing/", 0600));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_TRUE(NamesIn(directory).empty());
}

}  // namespace
}  // namespace sealkeeper
