#include "inspect/rules/path_way.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "inspect/rules/game_with_links.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;

TEST(LinkOutOfGame, IsFoundOnTheWayOfAPath) {
    const test::GameWithLinks game;
    EXPECT_EQ(LinkOutOfGame("out"), "out");
    EXPECT_EQ(LinkOutOfGame("out/x"), "out");
    EXPECT_EQ(LinkOutOfGame("relative/x"), "relative");
    EXPECT_EQ(LinkOutOfGame("twice/x"), "twice");
    EXPECT_EQ(LinkOutOfGame("neighbour/z"), "neighbour");
    EXPECT_EQ(LinkOutOfGame("inside/y"), std::nullopt);
    EXPECT_EQ(LinkOutOfGame("real/y"), std::nullopt);
    EXPECT_EQ(LinkOutOfGame("missing/y"), std::nullopt);
    EXPECT_EQ(LinkOutOfGame(""), std::nullopt) << "the game directory itself";
}

TEST(LinkOutOfGame, IsNoneOfTheRoot) {
    const test::ScopedCurrentDirectory inRoot("/");
    EXPECT_EQ(LinkOutOfGame("proc/self"), std::nullopt);
}

// A game with a directory that can be neither read nor entered.
class ClosedDirectory : public testing::Test {
  protected:
    ClosedDirectory() {
        game_.WriteFile("open/a", "1");
        game_.WriteFile("closed/b", "1");
        fs::permissions("closed", fs::perms::none);
    }
    ~ClosedDirectory() override { fs::permissions("closed", fs::perms::owner_all); }

    test::TempDirectory game_;
    test::ScopedCurrentDirectory inGame_{game_.Path()};
};

TEST_F(ClosedDirectory, IsNotOnEveryWay) {
    for (const char* const pattern :
         {"open/a", "open/*", "closed", "*/b", "missing/x", "", ".", "open/missing/x"}) {
        EXPECT_EQ(ClosedDirectoryIn(pattern), std::nullopt) << pattern;
    }
}

TEST_F(ClosedDirectory, IsTheOneThatKeepsAPatternFromItsFiles) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    for (const char* const pattern : {"closed/b", "closed/*", "closed\\b", ".//closed/deep/x"}) {
        EXPECT_EQ(ClosedDirectoryIn(pattern), "closed") << pattern;
    }
    fs::permissions("closed", fs::perms::owner_exec);
    EXPECT_EQ(ClosedDirectoryIn("closed/b"), std::nullopt) << "which may be gone through";
    EXPECT_EQ(ClosedDirectoryIn("closed/*"), "closed");
}

}  // namespace
}  // namespace sealkeeper
