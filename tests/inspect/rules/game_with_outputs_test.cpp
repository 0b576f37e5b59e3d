#include "inspect/rules/game_with_outputs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::ScopedCurrentDirectory;
using test::TempDirectory;
using Names = std::vector<std::string>;

class GameTree : public ::testing::Test {
  protected:
    [[nodiscard]] Names NamesIn(const std::string& directory) const {
        std::optional<DirectoryEntries> entries;
        EXPECT_EQ(game_.ReadDirectory(directory, entries), ResultCode::Ok);
        Names names;
        for (const DirectoryEntry& entry : entries.value_or(DirectoryEntries())) {
            if (!entry.name.starts_with('.')) {
                names.push_back(entry.name);
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    [[nodiscard]] FileStatus Look(const std::string& path) const {
        FileStatus status;
        EXPECT_EQ(game_.LookAtPath(path, status), ResultCode::Ok);
        return status;
    }

    TempDirectory directory_;
    ScopedCurrentDirectory inGame_{directory_.Path()};
    GameWithOutputs game_{directory_.Path()};
};

TEST_F(GameTree, HasWhatWasAdded) {
    static_cast<void>(directory_.WriteFile("a", "1"));
    game_.AddDirectory("x");
    game_.AddDirectory("x/y");
    game_.AddFile("x/y/z", 7);
    EXPECT_EQ(NamesIn("."), (Names{"a", "x"}));
    EXPECT_EQ(NamesIn("./x/"), Names{"y"});
    EXPECT_EQ(NamesIn("./x//y/"), Names{"z"});
    EXPECT_EQ(Look("./x").type, FileType::Directory);
    EXPECT_EQ(Look("./x/y/z").type, FileType::Regular);
    EXPECT_EQ(Look("./x/y/z").sizeBytes, 7);
    bool isThere = false;
    EXPECT_EQ(game_.LookForName("./x/y/z", isThere), ResultCode::Ok);
    EXPECT_TRUE(isThere);
    EXPECT_EQ(game_.LookForName("./x/y/q", isThere), ResultCode::Ok);
    EXPECT_FALSE(isThere);
}

TEST_F(GameTree, LeavesAloneWhatIsThere) {
    static_cast<void>(directory_.WriteFile("x/z", "123"));
    game_.AddDirectory("x");
    game_.AddFile("x/z", 7);
    EXPECT_EQ(NamesIn("."), Names{"x"});
    EXPECT_EQ(NamesIn("./x"), Names{"z"});
    EXPECT_EQ(Look("./x/z").sizeBytes, 3);
}

TEST_F(GameTree, IsReachedByLinksAndParents) {
    fs::create_directory(directory_ / "d");
    fs::create_directory_symlink(".", directory_ / "link");
    game_.AddDirectory("x");
    game_.AddFile("x/z", 7);
    EXPECT_EQ(NamesIn("./link/x/"), Names{"z"});
    EXPECT_EQ(NamesIn("./d/.."), (Names{"d", "link", "x"}));
    EXPECT_EQ(Look("./d/../x/z").sizeBytes, 7);
}

TEST_F(GameTree, AddsToWhatALinkLeadsTo) {
    fs::create_directory(directory_ / "d");
    fs::create_directory_symlink("d", directory_ / "x");
    game_.AddDirectory("x");
    game_.AddDirectory("x/y");
    game_.AddFile("x/y/z", 7);
    EXPECT_EQ(NamesIn("./d"), Names{"y"});
    EXPECT_EQ(NamesIn("./d/y"), Names{"z"});
    EXPECT_EQ(Look("./d/y/z").sizeBytes, 7);
    EXPECT_EQ(Look("./x/y/z").sizeBytes, 7);
}

// The system cannot follow such a link before the outputs are written.
TEST_F(GameTree, IsReachedByLinksThatDangleWithoutIt) {
    static_cast<void>(directory_.WriteFile("file", "12"));
    fs::create_directory_symlink("x", directory_ / "link");
    fs::create_directory_symlink("link/y", directory_ / "second");
    fs::create_symlink("x/../file", directory_ / "back");
    game_.AddDirectory("x");
    game_.AddDirectory("x/y");
    game_.AddFile("x/y/z", 7);
    EXPECT_EQ(NamesIn("./link/"), Names{"y"});
    EXPECT_EQ(NamesIn("second"), Names{"z"});
    EXPECT_EQ(Look("./link").type, FileType::Directory);
    EXPECT_EQ(Look("./second/z").sizeBytes, 7);
    EXPECT_EQ(Look("./back").sizeBytes, 2);
    EXPECT_EQ(Look("./link/missing").type, FileType::Missing);
}

TEST_F(GameTree, LinksThatLeadNowhereStayDangling) {
    fs::create_symlink("missing", directory_ / "dangling");
    fs::create_symlink("x/missing", directory_ / "below");
    fs::create_symlink("x/../circle", directory_ / "circle");
    game_.AddDirectory("x");
    for (const char* const path : {"dangling", "below", "circle", "circle/a"}) {
        EXPECT_EQ(Look(path).type, FileType::Missing) << path;
    }
}

TEST_F(GameTree, ALinkToTheGameItselfAddsNothingToIt) {
    fs::create_directory_symlink(".", directory_ / "x");
    game_.AddDirectory("x");
    game_.AddDirectory("x/y");
    EXPECT_EQ(NamesIn("."), (Names{"x", "y"}));
}

TEST_F(GameTree, IsNotReachedByWhatIsNotThere) {
    game_.AddDirectory("x");
    game_.AddFile("x/z", 7);
    EXPECT_EQ(Look("./missing/../x").type, FileType::Missing);
    EXPECT_EQ(Look("./x/missing/../z").type, FileType::Missing);
    EXPECT_EQ(Look("./x/../x/z").sizeBytes, 7);
    EXPECT_EQ(Look("./x/./z").sizeBytes, 7);
    EXPECT_EQ(Look("./x/missing/z").type, FileType::Missing);
}

// Where the system reports ENOTDIR.
TEST_F(GameTree, NoWayLeadsThroughAFile) {
    static_cast<void>(directory_.WriteFile("file", "1"));
    static_cast<void>(directory_.WriteFile("other", "2"));
    game_.AddFile("added", 3);
    for (const char* const path : {"file/../other", "file/.", "file/", "file//", "file/..",
                                   "added/../other", "added/.", "added/"}) {
        EXPECT_EQ(Look(path).type, FileType::Missing) << path;
    }
    EXPECT_EQ(Look("added").type, FileType::Regular);
}

TEST_F(GameTree, AddedDirectoriesHaveTheirDots) {
    game_.AddDirectory("x");
    std::optional<DirectoryEntries> entries;
    ASSERT_EQ(game_.ReadDirectory("x", entries), ResultCode::Ok);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ(entries->at(0).name, ".");
    EXPECT_EQ(entries->at(1).name, "..");
}

TEST_F(GameTree, OutputsMayLieInTheRootOfTheSystem) {
    fs::create_directory_symlink("/", "out");
    game_.AddDirectory("out/no-such-folder");
    game_.AddFile("out/no-such-folder/file", 4);
    EXPECT_EQ(Look("out/no-such-folder/file").sizeBytes, 4);
    EXPECT_EQ(Look("/no-such-folder/file").sizeBytes, 4);
    EXPECT_EQ(game_.LocationOf("out/no-such-folder"), "/no-such-folder");
    EXPECT_EQ(Look("no-such-folder").type, FileType::Missing);
    EXPECT_EQ(NamesIn("."), Names{"out"});
}

TEST_F(GameTree, PathsLongerThanTheSystemTakesLeadNowhere) {
    std::string path = "x";
    for (int i = 0; i < 100'000; ++i) {
        path += "/x";
    }
    EXPECT_EQ(Look(path).type, FileType::Missing);
}

TEST_F(GameTree, NothingIsFoundWhereTheCurrentDirectoryIsGone) {
    const TempDirectory other;
    const std::string gone = other / "gone";
    fs::create_directories(gone);
    const ScopedCurrentDirectory there(gone);
    fs::remove(gone);
    game_.AddFile("x", 7);
}

TEST_F(GameTree, MayBeTheRoot) {
    const ScopedCurrentDirectory inRoot("/");
    GameWithOutputs root("/");
    EXPECT_EQ(root.LocationOf("tmp"), fs::canonical("/tmp").string().substr(1));
    root.AddDirectory("sealkeeper-test-output");
    root.AddFile("sealkeeper-test-output/x", 7);
    FileStatus status;
    EXPECT_EQ(root.LookAtPath("./sealkeeper-test-output/x", status), ResultCode::Ok);
    EXPECT_EQ(status.sizeBytes, 7);
}

}  // namespace
}  // namespace sealkeeper
