#include "inspect/tree/lexical_path.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

TEST(LexicalPath, DropsWhatLeadsNowhere) {
    EXPECT_EQ(LexicalPath("./a//b/./c/"), "a/b/c");
    EXPECT_EQ(LexicalPath("a/../b"), "b");
    EXPECT_EQ(LexicalPath("a/b/../../c"), "c");
    EXPECT_EQ(LexicalPath("..a/.b/c.."), "..a/.b/c..");
}

TEST(LexicalPath, IsEmptyForTheGameItself) {
    EXPECT_EQ(LexicalPath(""), "");
    EXPECT_EQ(LexicalPath("./"), "");
    EXPECT_EQ(LexicalPath("a/.."), "");
}

TEST(LexicalPath, KeepsWhatLeavesTheGame) {
    EXPECT_EQ(LexicalPath("../a"), "../a");
    EXPECT_EQ(LexicalPath("a/../../.."), "../..");
    EXPECT_EQ(LexicalPath("../../a/../b"), "../../b");
}

TEST(LexicalPath, TellsWhatLeavesTheGame) {
    EXPECT_TRUE(LeavesGame(".."));
    EXPECT_TRUE(LeavesGame("../a"));
    EXPECT_FALSE(LeavesGame("..a"));
    EXPECT_FALSE(LeavesGame("a"));
    EXPECT_FALSE(LeavesGame(""));
}

TEST(LexicalPath, TakesAPathApart) {
    EXPECT_EQ(ParentOf("a/b/c"), "a/b");
    EXPECT_EQ(NameOf("a/b/c"), "c");
    EXPECT_EQ(ParentOf("a"), "");
    EXPECT_EQ(NameOf("a"), "a");
}

}  // namespace
}  // namespace sealkeeper
