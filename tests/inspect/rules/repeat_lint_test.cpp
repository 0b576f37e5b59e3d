// The warnings of repeat_lint.cpp.
#include <gtest/gtest.h>

#include <filesystem>

#include "inspect/rules/linted_selection.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<std::string>;
using test::LintedSelection;
using test::ToldBy;

TEST(RepeatedFiles, AreToldAtTheLastPatternThatLeadsToThem) {
    LintedSelection subject;
    subject.Match({{"bin", {"bin"}}, {"other", {"other"}}, {"bin/*", {"bin/a", "bin/./b"}}});
    subject.Select({"bin/a", "bin/a", "bin//b", "bin/./b", "bin/c", "other"});
    EXPECT_EQ(
        ToldBy(LintRepeatedFiles, subject),
        Paths{
            "3 'bin/a' and 'bin/b' are sealed more than once, because several paths lead there (patterns 'bin' and 'bin/*'). / Take out the pattern 'bin/*': 'bin' seals all of it, and a file is hashed and verified once for each."});
}

TEST(RepeatedFiles, MayComeOfTheWholeGame) {
    LintedSelection subject;
    subject.Match({{".", {"."}}, {"a", {"a"}}});
    subject.Select({"./a", "a"});
    EXPECT_EQ(
        ToldBy(LintRepeatedFiles, subject),
        Paths{
            "2 'a' is sealed more than once, because several paths lead there (patterns '.' and 'a'). / Take out the pattern 'a': '.' seals all of it, and a file is hashed and verified once for each."});
}

// The cure of the only warning about repeated files.
std::string CureOfRepetition(const LintedSelection& subject) {
    const std::string separator = " / ";
    const Paths told = ToldBy(LintRepeatedFiles, subject);
    return told.size() == 1 ? told[0].substr(told[0].find(separator) + separator.size())
                            : std::to_string(told.size()) + " warnings";
}

constexpr const char* kDoNotOverlap =
    "Write patterns that do not overlap, and that still lead to every file: more than once, a file only takes longer to hash and verify.";

TEST(RepeatedFiles, ArePreventedByNoPatternWhereEachSealsFilesOfItsOwn) {
    LintedSelection subject;
    subject.Match({{"d", {"d"}}, {"*/b", {"d/b", "e/b"}}});
    subject.Select({"d/a", "d/b", "d/b", "e/b"});
    EXPECT_EQ(CureOfRepetition(subject), kDoNotOverlap);
}

// A file that a pattern names is sealed whatever its extension, and one that a walk finds is not.
TEST(RepeatedFiles, MayBeBesideOnesThatAWalkLeavesOut) {
    LintedSelection subject;
    subject.Match({{"d", {"d"}}, {"d/*", {"d/a", "d/x.pdb"}}});
    subject.Select({"d/a", "d/a", "d/x.pdb"});
    EXPECT_EQ(CureOfRepetition(subject), kDoNotOverlap);
}

TEST(RepeatedFiles, ArePreventedByTheOnePatternThatSealsAll) {
    LintedSelection subject;
    subject.Match({{"d", {"d"}}, {"d/a", {"d/a"}}, {".", {"."}}, {"e", {"e"}}});
    subject.Select({"d/a", "d/a", "d/a", "d/b", "d/b", "d-b", "e"});
    const Paths told = ToldBy(LintRepeatedFiles, subject);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_TRUE(told[0].ends_with(
        "Take out the patterns 'd' and 'd/a': '.' seals all of them, and a file is hashed and verified once for each."))
        << told[0];
}

TEST(RepeatedFiles, AreSealedByTheFirstOfEqualPatterns) {
    LintedSelection subject;
    subject.Match({{"d/a", {"d/a"}}, {"d/./a", {"d/./a"}}, {"d//a", {"d//a"}}});
    subject.Select({"d/a", "d/./a", "d//a"});
    EXPECT_EQ(
        CureOfRepetition(subject),
        "Take out the patterns 'd/./a' and 'd//a': 'd/a' seals all of them, and a file is hashed and verified once for each.");
}

TEST(RepeatedFiles, MayBeOtherFilesWhereAPatternGoesBack) {
    LintedSelection subject;
    subject.Match({{"a", {"a"}}, {"link/../a", {"link/../a"}}});
    subject.Select({"a", "link/../a"});
    EXPECT_EQ(CureOfRepetition(subject), kDoNotOverlap);
}

TEST(RepeatedFiles, MayComeOfOnePattern) {
    LintedSelection subject;
    subject.Match({{"*/..", {"d/..", "e/.."}}});
    subject.Select({"d/../a", "e/../a"});
    EXPECT_EQ(
        ToldBy(LintRepeatedFiles, subject),
        Paths{
            "1 'a' is sealed more than once, because several paths lead there (pattern '*/..'). / Write a pattern that leads to each file by one path: more than once, a file only takes longer to hash and verify."});
}

TEST(RenamedFiles, AreToldOnceForThePatternsThatLeadToThem) {
    const test::TempDirectory game;
    const test::ScopedCurrentDirectory here(game.Path());
    for (const char* const name : {"d/a", "d/b", "d/c", "e"}) {
        game.WriteFile(name, "1");
    }
    fs::create_directory_symlink("d", "link");
    fs::create_symlink("d/c", "c");
    LintedSelection subject;
    subject.Match({{"link", {"link"}}, {"d", {"d"}}, {"?", {"c", "e"}}});
    subject.Select({"link/a", "link/b", "d/a", "d/b", "d/c", "c", "e", "gone"});
    const std::string cure =
        " / Write patterns that lead to each file by one name only: it is hashed and verified once for each.";
    EXPECT_EQ(
        ToldBy(LintRenamedFiles, subject),
        (Paths{
            "2 'd/a' and 'link/a' are one file because of a link, and it is sealed under each name, as is 1 more file (patterns 'link' and 'd')." +
                cure,
            "3 'c' and 'd/c' are one file because of a link, and it is sealed under each name (patterns 'd' and '?')." +
                cure}));
}

TEST(RenamedFiles, AreToldOfNoLinkWhereThereIsNone) {
    const test::TempDirectory directory;
    directory.WriteFile("game/d/a", "1");
    directory.WriteFile("game/e", "1");
    const test::ScopedCurrentDirectory game(directory / "game");
    fs::create_symlink("e", "f");
    LintedSelection subject;
    subject.Match({{"d", {"d"}}, {"../game/?", {"../game/d", "../game/e"}}, {"f", {"f"}}});
    subject.Select({"d/a", "../game/d/a", "../game/e", "f"});
    const std::string cure =
        " / Write patterns that lead to each file by one name only: it is hashed and verified once for each.";
    EXPECT_EQ(
        ToldBy(LintRenamedFiles, subject),
        (Paths{
            "2 '../game/d/a' and 'd/a' are one file, and it is sealed more than once, because several paths lead there (patterns 'd' and '../game/?')." +
                cure,
            "3 '../game/e' and 'f' are one file because of a link, and it is sealed under each name (patterns '../game/?' and 'f')." +
                cure}));
}

TEST(RenamedFiles, AreNoneByNamesAlone) {
    const test::TempDirectory game;
    const test::ScopedCurrentDirectory here(game.Path());
    game.WriteFile("a", "1");
    fs::create_hard_link("a", "b");
    fs::create_symlink("a", "c");
    LintedSelection subject;
    subject.Match({{".", {"."}}, {"./b", {"./b"}}, {"c", {"c"}}});
    subject.Select({"a", "b", "./b"});
    EXPECT_EQ(ToldBy(LintRenamedFiles, subject), Paths{}) << "these are two files on another disk";
}

}  // namespace
}  // namespace sealkeeper
