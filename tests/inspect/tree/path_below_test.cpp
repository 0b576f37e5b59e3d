#include "inspect/tree/path_below.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

TEST(PathBelow, IsTheRestOfAPathInTheDirectory) {
    EXPECT_EQ(PathBelow("/game/a", "/game"), "a");
    EXPECT_EQ(PathBelow("/game/a/b", "/game"), "a/b");
    EXPECT_TRUE(IsBelow("/game/a", "/game"));
}

TEST(PathBelow, IsNothingElsewhere) {
    for (const char* const path : {"/game", "/", "/game2/a", "/gam", "/other/game/a"}) {
        EXPECT_EQ(PathBelow(path, "/game"), std::nullopt) << path;
        EXPECT_FALSE(IsBelow(path, "/game")) << path;
    }
}

TEST(PathBelow, TakesTheRootForADirectory) {
    EXPECT_EQ(PathBelow("/a", "/"), "a");
    EXPECT_EQ(PathBelow("/a/b", "/"), "a/b");
    EXPECT_EQ(PathBelow("/", "/"), std::nullopt);
}

}  // namespace
}  // namespace sealkeeper
