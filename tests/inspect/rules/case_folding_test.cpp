#include "inspect/rules/case_folding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace sealkeeper {
namespace {

TEST(CaseFolding, TakesLettersOfAllScriptsForTheSame) {
    if (!KnowsLettersOfUnicode()) {
        GTEST_SKIP() << "neither the locale C.UTF-8 nor en_US.UTF-8 is installed";
    }
    const std::vector<std::vector<std::string>> groups = {
        {"a/B.exe", "A/b.EXE"},
        {"École", "école", "ÉCOLE"},
        {"Жук", "жук"},
        {"Σ", "σ", "ς"},
        {"ß", "ẞ"},
        {"\U00010400", "\U00010428", "𐐀"},
    };
    for (const auto& group : groups) {
        for (const std::string& name : group) {
            EXPECT_EQ(CaseFolded(name), CaseFolded(group.front())) << name;
        }
    }
}

TEST(CaseFolding, KeepsOtherNamesApart) {
    const std::vector<std::vector<std::string>> groups = {
        {"e", "é"}, {"ß", "ss"}, {"i", "ı", "İ"}, {"\xFF", "\xFE"}, {"\xFF", "U82W_ERROR"}};
    for (const auto& group : groups) {
        for (std::size_t i = 1; i < group.size(); ++i) {
            EXPECT_NE(CaseFolded(group[i]), CaseFolded(group[i - 1])) << group[i];
        }
    }
}

TEST(CaseFolding, TakesAsciiAloneWhereTextIsNoUtf8) {
    EXPECT_EQ(CaseFolded("A\xFF"), CaseFolded("a\xFF"));
    EXPECT_NE(CaseFolded("\xC4"), CaseFolded("\xE4")) << "letters of Latin-1";
}

}  // namespace
}  // namespace sealkeeper
