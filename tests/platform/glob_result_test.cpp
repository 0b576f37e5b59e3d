#include "platform/glob_result.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::ScopedCurrentDirectory;
using test::TempDirectory;

constexpr int kNoFlags = 0;

TEST(GlobResult, LiteralPatternEscapesWhatHasAMeaning) {
    EXPECT_EQ(LiteralGlobPattern(""), "");
    EXPECT_EQ(LiteralGlobPattern("/a b/c.d-e!{f}~\xC3\xA4/"), "/a b/c.d-e!{f}~\xC3\xA4/");
    EXPECT_EQ(LiteralGlobPattern("*?[]\\"), "\\*\\?\\[\\]\\\\");
    EXPECT_EQ(LiteralGlobPattern("a[b]/**"), "a\\[b\\]/\\*\\*");
}

TEST(GlobResult, LiteralPatternMatchesItselfAlone) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    const std::vector<std::string> names = {"a", "ab", "*",    "?",  "[a]",
                                            "[", "]",  "a\\b", "\\", "[!a]"};
    for (const std::string& name : names) {
        directory.WriteFile(name, "");
    }
    for (const std::string& name : names) {
        const GlobResult found(LiteralGlobPattern(name), kNoFlags);
        ASSERT_EQ(found.Status(), 0) << name;
        ASSERT_EQ(found.Paths().size(), 1U) << name;
        EXPECT_EQ(std::string(found.Paths()[0]), name);
    }
}

TEST(GlobResult, NothingFound) {
    const TempDirectory directory;
    const GlobResult found(directory / "*", kNoFlags);
    EXPECT_EQ(found.Status(), GLOB_NOMATCH);
    EXPECT_TRUE(found.Paths().empty());
}

}  // namespace
}  // namespace sealkeeper
