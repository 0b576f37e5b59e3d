#include "platform/path_strings.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace sealkeeper {
namespace {

TEST(PathStrings, EnsureTrailingSeparator) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", ""},
        {"/", "/"},
        {"\\", "\\"},
        {"/games/mygame", "/games/mygame/"},
        {"/games/mygame/", "/games/mygame/"},
        {"C:\\games\\", "C:\\games\\"},
        {"C:\\games", "C:\\games/"},
        {"a//", "a//"},
        {".", "./"},
        {std::string("a\0", 2), std::string("a\0/", 3)},
    };
    for (const auto& [given, expected] : cases) {
        std::string path = given;
        EnsureTrailingSeparator(path);
        EXPECT_EQ(path, expected) << given;
        std::wstring wide(given.begin(), given.end());
        EnsureTrailingSeparatorWide(wide);
        EXPECT_EQ(wide, std::wstring(expected.begin(), expected.end())) << given;
    }
}

TEST(PathStrings, EnsureTrailingSlash) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "/"}, {"/", "/"}, {"/games", "/games/"}, {"/games/", "/games/"}, {"/g\\", "/g\\/"}};
    for (const auto& [given, expected] : cases) {
        std::string path = given;
        EnsureTrailingSlash(path);
        EXPECT_EQ(path, expected) << given;
    }
}

TEST(PathStrings, WidePathThatEndsInACharacterBeyondAscii) {
    // Its low byte is '/'.
    std::wstring path = L"a\u012F";
    EnsureTrailingSeparatorWide(path);
    EXPECT_EQ(path, L"a\u012F/");
}

struct ReplaceCase {
    std::string text;
    std::string find;
    std::string replacement;
    bool replaced;
    std::string expected;
};

TEST(PathStrings, ReplaceFirst) {
    const std::vector<ReplaceCase> cases = {
        {"xabcabc", "abc", "Z", true, "xZabc"},
        {"abc", "abc", "", true, ""},
        {"abc", "abc", "abcabc", true, "abcabc"},
        {"abc", "", "Z", true, "Zabc"},
        {"", "", "Z", true, "Z"},
        {"abc", "", "", true, "abc"},
        {"", "a", "Z", false, ""},
        {"ab", "abc", "Z", false, "ab"},
        {"abd", "abc", "Z", false, "abd"},
        {"aab", "ab", "Z", true, "aZ"},
        {"aaa", "aa", "b", true, "ba"},
        {"a\\\\\\b", "\\\\", "\\", true, "a\\\\b"},
        {std::string("a\0b", 3), std::string("\0b", 2), "Z", true, "aZ"},
    };
    for (const ReplaceCase& replace : cases) {
        std::string text = replace.text;
        EXPECT_EQ(ReplaceFirst(text, replace.find, replace.replacement), replace.replaced)
            << replace.text;
        EXPECT_EQ(text, replace.expected) << replace.text;
    }
}

TEST(PathStrings, WithForwardSlashes) {
    EXPECT_EQ(WithForwardSlashes(""), "");
    EXPECT_EQ(WithForwardSlashes("a/b"), "a/b");
    EXPECT_EQ(WithForwardSlashes("\\a\\\\b\\"), "/a//b/");
}

TEST(PathStrings, BaseName) {
    const std::vector<std::pair<std::string, std::string>> cases = {{"", ""},
                                                                    {"program", "program"},
                                                                    {"/usr/bin/program", "program"},
                                                                    {"a\\b", "b"},
                                                                    {"a\\b/c", "c"},
                                                                    {"a/b\\c", "c"},
                                                                    {"dir/", "dir/"},
                                                                    {"dir\\", "dir\\"},
                                                                    {"/", "/"},
                                                                    {"/program", "program"}};
    for (const auto& [path, expected] : cases) {
        EXPECT_EQ(BaseName(path), expected) << path;
    }
}

}  // namespace
}  // namespace sealkeeper
