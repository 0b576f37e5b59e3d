#include "inspect/check/listed_paths.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

class ListedPathsTest : public testing::Test {
  protected:
    ListedPathsTest() : here_(game_.Path()), listed_(game_ / "") {
        game_.WriteFile("data/sub/x", "");
    }

    test::TempDirectory game_;
    test::ScopedCurrentDirectory here_;
    ListedPaths listed_;
};

TEST_F(ListedPathsTest, ComparesByTheLetter) {
    listed_.Add("data/A.pak");
    EXPECT_TRUE(listed_.Has("data/A.pak"));
    EXPECT_FALSE(listed_.Has("data/a.pak"));
    EXPECT_FALSE(listed_.Has("A.pak"));
    EXPECT_FALSE(listed_.Has("data"));
}

TEST_F(ListedPathsTest, OtherWaysToWriteAPath) {
    for (const std::string path :
         {"./one", ".//one", "data/./sub//two", "data/../three", "data/sub/../../four"}) {
        listed_.Add(path);
    }
    listed_.Add(game_ / "data/five");
    for (const std::string path : {"one", "data/sub/two", "three", "four", "data/five"}) {
        EXPECT_TRUE(listed_.Has(path)) << path;
    }
}

TEST_F(ListedPathsTest, ParentOfALinkIsThatOfItsTarget) {
    std::filesystem::create_directory_symlink("data/sub", "link");
    listed_.Add("link/../y");
    EXPECT_TRUE(listed_.Has("data/y"));
    EXPECT_FALSE(listed_.Has("y"));
}

TEST_F(ListedPathsTest, PathsOutsideOfTheGameAreNone) {
    listed_.Add("../outside");
    listed_.Add("/etc/passwd");
    listed_.Add("missing/../z");
    EXPECT_FALSE(listed_.Has("outside"));
    EXPECT_FALSE(listed_.Has("etc/passwd"));
    EXPECT_FALSE(listed_.Has("z"));
}

}  // namespace
}  // namespace sealkeeper
