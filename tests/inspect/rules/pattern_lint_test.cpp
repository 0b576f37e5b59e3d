// The warnings of pattern_lint.cpp.
#include <gtest/gtest.h>

#include "inspect/rules/game_with_links.h"
#include "inspect/rules/linted_selection.h"

namespace sealkeeper {
namespace {

using Paths = std::vector<std::string>;
using test::LintedSelection;
using test::ToldBy;

TEST(UnmatchedPatterns, AreSaidToSealNothing) {
    LintedSelection subject;
    subject.Match({{"a", {"a"}}, {"b", {}}});
    EXPECT_EQ(ToldBy(LintUnmatchedPatterns, subject),
              Paths{"2 The pattern 'b' matches nothing. / Correct it or take it out: what it was "
                    "meant for is not sealed."});
}

TEST(UnmatchedPatterns, AreSaidToExcludeNothing) {
    LintedSelection subject;
    subject.Match({{"b*", {}}}, false);
    EXPECT_EQ(ToldBy(LintUnmatchedPatterns, subject),
              Paths{"1 The pattern 'b*' matches nothing. / Correct it or take it out: what it was "
                    "meant for is sealed."});
}

TEST(UnmatchedPatterns, MayBeInAnotherEncodingThanTheNamesOfFiles) {
    LintedSelection subject;
    subject.Match({{"caf\xE9*", {}}, {"caf\u00e9*", {"caf\u00e9s"}}, {"\xE9", {"\xE9"}}}, false);
    EXPECT_EQ(
        ToldBy(LintUnmatchedPatterns, subject),
        Paths{
            "1 The pattern 'caf\xE9*' matches nothing, perhaps because it is not UTF-8. / Where the names of the files are UTF-8, save the configuration file as UTF-8 without a byte-order mark."});
}

TEST(UnmatchedPatterns, AreNoneWhereTheSecondRunFindsSomething) {
    LintedSelection subject;
    subject.Match({{"out/base.bin", {}}});
    subject.second.matches[0] = {"./out/base.bin"};
    EXPECT_EQ(ToldBy(LintUnmatchedPatterns, subject), Paths{});
}

TEST(LeavingPatterns, AreToldByThemselvesAndByWhatTheyMatch) {
    LintedSelection subject;
    subject.Match({{"../x", {}}, {"a\\..\\..\\x", {}}, {".*", {"..", ".a"}}, {"a/../b", {"b"}}});
    const auto told = [](const std::string& pattern) {
        return pattern.substr(0, 2) + "The pattern '" + pattern.substr(2) +
               "' leads out of the game directory by '..'. / Name only files of the game: on another machine there is something else beside it.";
    };
    EXPECT_EQ(ToldBy(LintLeavingPatterns, subject),
              (Paths{told("1 ../x"), told("2 a\\..\\..\\x"), told("3 .*")}));
}

TEST(LinksOutOfGame, AreToldOncePerPattern) {
    const test::GameWithLinks game;
    LintedSelection subject;
    subject.Match(
        {{"real", {"real"}}, {"*/?", {"out/x", "real/y", "relative/x"}}, {"../x", {"../x"}}});
    EXPECT_EQ(ToldBy(LintLinksOutOfGame, subject),
              Paths{"2 The pattern '*/?' leads out of the game directory by the links 'out' and "
                    "'relative'. / Ship files in place of links: on another machine there is "
                    "something else where they lead."});
}

TEST(LinksOutOfGame, MayBeExcluded) {
    const test::GameWithLinks game;
    LintedSelection subject;
    subject.Match({{"out", {"out"}}}, false);
    EXPECT_EQ(ToldBy(LintLinksOutOfGame, subject), Paths{});
}

TEST(ExtensionCase, IsToldOfFilesThatDifferInItAlone) {
    LintedSelection subject;
    subject.selection.config.excludedExtensions = {".LOG", ".pak", ".Pak", ".Pdb", "none", "."};
    subject.places.extensions = {
        {".LOG", {7, 1}}, {".pak", {8, 1}}, {".Pak", {9, 1}}, {".", {10, 1}}};
    subject.Match({}, false);
    subject.Select({"a.log", "d/B.PAK", "c.pAK", "e.PAK", "bare", "pdb", "NONE", "z."});
    subject.LeaveOut(LeftOutReason::ExcludedExtension, "a.pak");
    subject.LeaveOut(LeftOutReason::Hidden, ".x/a.pdb");
    EXPECT_EQ(
        ToldBy(LintExtensionCase, subject),
        (Paths{
            "7 'a.log' has the extension '.LOG' in another letter case and is not left out. / Letter case counts: write \".log\", too, if such files are to be left out.",
            "9 3 files, such as 'c.pAK', have the extension '.Pak' in another letter case and are not left out. / Letter case counts: write \".PAK\", \".pAK\", too, if such files are to be left out."}));
}

TEST(ExtensionCase, NamesAFewSpellings) {
    LintedSelection subject;
    subject.selection.config.excludedExtensions = {".pak"};
    subject.Match({}, false);
    subject.Select({"a.PAK", "b.PAk", "c.PaK"});
    EXPECT_TRUE(
        ToldBy(LintExtensionCase, subject)
            .at(0)
            .ends_with(
                "write \".PAK\", \".PAk\", \".PaK\", too, if such files are to be left out."));
    subject.Select({"d.paK"});
    EXPECT_TRUE(
        ToldBy(LintExtensionCase, subject)
            .at(0)
            .ends_with("write each spelling in use, too, if such files are to be left out."));
}

TEST(ExtensionCase, IsNoMatterOfAFileThatAPatternNames) {
    LintedSelection subject;
    subject.selection.config.excludedExtensions = {".pdb"};
    subject.Match({{"*.pdb", {"named.pdb"}}, {"?.PDB", {"n.PDB"}}});
    subject.Select({"named.pdb", "n.PDB"});
    EXPECT_EQ(ToldBy(LintExtensionCase, subject), Paths{});
}

}  // namespace
}  // namespace sealkeeper
