#include "inspect/rules/path_way.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "inspect/rules/game_with_links.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> LinkOf(OutwardLinks& links, const std::string& path) {
    std::optional<std::string> link;
    EXPECT_EQ(links.Find(path, link), ResultCode::Ok);
    return link;
}

std::optional<std::string> ClosedDirectoryIn(const char* pattern) {
    std::optional<std::string> closed;
    EXPECT_EQ(FindClosedDirectory(pattern, closed), ResultCode::Ok);
    return closed;
}

TEST(OutwardLinks, AreFoundOnTheWayOfAPath) {
    const test::GameWithLinks game;
    OutwardLinks links;
    EXPECT_EQ(LinkOf(links, "out"), "out");
    EXPECT_EQ(LinkOf(links, "out/x"), "out");
    EXPECT_EQ(LinkOf(links, "relative/x"), "relative");
    EXPECT_EQ(LinkOf(links, "twice/x"), "twice");
    EXPECT_EQ(LinkOf(links, "neighbour/z"), "neighbour");
    EXPECT_EQ(LinkOf(links, "inside/y"), std::nullopt);
    EXPECT_EQ(LinkOf(links, "real/y"), std::nullopt);
    EXPECT_EQ(LinkOf(links, "missing/y"), std::nullopt);
    EXPECT_EQ(LinkOf(links, ""), std::nullopt) << "the game directory itself";
}

TEST(OutwardLinks, AreNoneOfTheRoot) {
    const test::ScopedCurrentDirectory inRoot("/");
    OutwardLinks links;
    EXPECT_EQ(LinkOf(links, "proc/self"), std::nullopt);
}

TEST(OutwardLinks, AreLookedForOnce) {
    const test::GameWithLinks game;
    OutwardLinks links;
    EXPECT_EQ(LinkOf(links, "out/x"), "out");
    EXPECT_EQ(LinkOf(links, "real/y"), std::nullopt);
    fs::remove("out");
    fs::remove_all("real");
    fs::create_directory_symlink("../beside", "real");
    EXPECT_EQ(LinkOf(links, "out/x"), "out");
    EXPECT_EQ(LinkOf(links, "real/y"), std::nullopt);
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
    for (const char* const pattern : {"open/a", "open/*", "closed", "*/b", "missing/x", "", ".",
                                      "open/missing/x", "open/a/x"}) {
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
