// The other warnings about a selection, and that all are asked for.
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

// The outputs of a run, and a second run that selects some of them.
LintedSelection OutputsSelected(const Paths& selected) {
    LintedSelection subject;
    subject.outputs.catalogue = "Q/base.bin";
    subject.outputs.certificateCopy = "Q/base.cer";
    subject.outputs.runtimeConfiguration = "Q/runtime.conf";
    subject.places.patternList = {9, 1};
    subject.places.patternKey = "exclude_paths";
    for (const std::string& path : selected) {
        subject.second.files.push_back({"./" + path});
    }
    return subject;
}

TEST(OwnOutputs, AreToldAtTheListOfExcludes) {
    EXPECT_EQ(
        ToldBy(LintOwnOutputs, OutputsSelected({"Q/base.bin", "Q/base.cer", "a"})),
        Paths{
            "9 A second run seals 'Q/base.bin' and 'Q/base.cer' of the first one and then replaces them, so verify fails. / Add \"Q\" to exclude_paths."});
    EXPECT_EQ(
        ToldBy(LintOwnOutputs, OutputsSelected({"Q/base.cer", "Q/runtime.conf"})),
        Paths{
            "9 A second run seals 'Q/base.cer' of the first one and then replaces it, so verify fails once another certificate is used. / Add \"Q\" to exclude_paths."});
}

// Excluding the folder would leave the game's own files in it unsealed.
TEST(OwnOutputs, AreNamedThemselvesWhereTheirFolderHasMore) {
    const Paths told = ToldBy(LintOwnOutputs, OutputsSelected({"Q/base.bin", "Q/client.so"}));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told[0].ends_with("Add \"Q/base.bin\" to exclude_paths.")) << told[0];
}

// The configuration language has no way to write them.
TEST(OwnOutputs, AreExcludedByWildcardsForCharactersThatNoListHolds) {
    LintedSelection subject = OutputsSelected({"a\"]\\\nb.bin"});
    subject.outputs.catalogue = "a\"]\\\nb.bin";
    EXPECT_TRUE(
        ToldBy(LintOwnOutputs, subject).at(0).ends_with("Add \"a????b.bin\" to exclude_paths."));
}

TEST(OwnOutputs, MayBeTheSettingsAlone) {
    EXPECT_EQ(ToldBy(LintOwnOutputs, OutputsSelected({"Q/runtime.conf"})),
              Paths{"9 A run seals 'Q/runtime.conf', which it writes itself and which has a "
                    "signature of its own. / Add \"Q\" to exclude_paths."});
}

TEST(OwnOutputs, AreNotOtherFilesOfTheirNames) {
    EXPECT_EQ(ToldBy(LintOwnOutputs, OutputsSelected({"base.bin", "Q/Q/base.cer"})), Paths{});
}

TEST(OwnOutputs, AreToldAtTheIncludePatternThatLeadsToThem) {
    LintedSelection subject = OutputsSelected({"Q/base.bin"});
    subject.places.patternKey = "include_paths";
    subject.Match({{"a", {"a"}}, {"Q/b*", {"Q/base.bin"}}, {"Q", {"Q"}}});
    EXPECT_EQ(
        ToldBy(LintOwnOutputs, subject),
        Paths{
            "2 A second run seals 'Q/base.bin' of the first one and then replaces it, so verify fails. / Write in include_paths what to hash, but not \"Q\"."});
}

TEST(ImpossibleNames, AreNoUtf8OrTooLong) {
    LintedSelection subject;
    subject.Select({"a\xFF", "b\xFE", "b\xFE", std::string(255, 'x'), std::string(256, 'y')});
    EXPECT_EQ(
        ToldBy(LintImpossibleNames, subject),
        (Paths{"'a\xFF' and 'b\xFE' are not UTF-8: the catalogue lists empty files 'U82W_ERROR' in "
               "their place, and verify fails. / Rename it, or leave it out.",
               "'" + std::string(256, 'y') +
                   "' is longer than the 255 UTF-16 units that a catalogue has room for: generate "
                   "fails at it. / Shorten its names, or leave it out."}));
}

TEST(Backslashes, AreToldOfNamesOnDisk) {
    LintedSelection subject;
    subject.Select({"a\\b", "c/d"});
    EXPECT_EQ(
        ToldBy(LintBackslashNames, subject),
        Paths{"'a\\b' has a backslash, which the catalogue holds as a slash: verify looks "
              "for another file and fails. / Rename it, or write patterns that do not take it "
              "in."});
    subject.places.patternKey = "exclude_paths";
    EXPECT_TRUE(ToldBy(LintBackslashNames, subject)
                    .at(0)
                    .ends_with("Rename it, or exclude it by a pattern with '?' in place of the "
                               "backslash."));
}

TEST(UnhashableFiles, AreNoRegularOnes) {
    LintedSelection subject;
    subject.selection.files = {{"./a"}, {"./fifo", 0, FileType::Fifo}};
    EXPECT_EQ(
        ToldBy(LintUnhashableFiles, subject),
        Paths{"'fifo' is not a regular file: the catalogue lists it as an empty one, and verify "
              "fails. / Write patterns that do not match it."});
}

TEST(UnhashableFiles, AreThoseInDirectoriesThatCannotBeSearched) {
    LintedSelection subject;
    subject.selection.files = {{"./d/a", 0, FileType::Missing}, {"./d/b", 0, FileType::Missing}};
    EXPECT_EQ(ToldBy(LintUnhashableFiles, subject),
              Paths{"'d/a' and 'd/b' lie in directories that this user may not search: the "
                    "catalogue lists them as empty files, and verify fails. / Give this user the "
                    "right to search the directory."});
}

TEST(UnhashableFiles, AreNotReadWhereTheirNamesAreNoUtf8) {
    LintedSelection subject;
    subject.selection.files = {{"./\xFF", 0, FileType::Fifo}, {"./\xFE", 0, FileType::Missing}};
    EXPECT_EQ(ToldBy(LintUnhashableFiles, subject), Paths{});
}

TEST(Aliases, AreToldWithHowManyPathsTheyChange) {
    LintedSelection subject;
    subject.selection.config.pathAliases = {{"Bin", "b"}, {"Data", "d"}, {"DataX", "x"}};
    subject.places.aliases = {{"Bin", {5, 1}}, {"Data", {6, 1}}, {"DataX", {7, 1}}};
    subject.Select({"DataX/1", "Data/2", "e"});
    const std::string useless =
        "' changes no path: none contains it, or another alias applies first. / Correct it or take it "
        "out.";
    EXPECT_EQ(ToldBy(LintAliasUses, subject),
              (Paths{"5 The alias 'Bin" + useless,
                     "6 The alias 'Data' changes the stored paths of 2 files: verify looks for "
                     "another file in place of each, and usually fails. / Take it out, "
                     "unless these files are checked by a client that knows aliases and never by "
                     "verify.",
                     "7 The alias 'DataX" + useless}));
}

TEST(SelectionLint, AsksEveryRule) {
    const test::TempDirectory directory;
    fs::create_directory(directory / "game");
    fs::create_symlink("../game", directory / "beside");
    const test::ScopedCurrentDirectory here(directory / "game");
    fs::create_directory_symlink("..", "out");
    directory.WriteFile("game/a", "1");
    fs::create_symlink("a", "link to a");
    LintedSelection subject = OutputsSelected({"Q/base.bin"});
    subject.Match({{"b", {}}, {"../x", {"../x"}}, {"out", {"out"}}});
    subject.Select({"a", "a", "c\\d", "\xFF", "link to a"});
    subject.selection.files.push_back({"./fifo", 0, FileType::Fifo});
    subject.selection.config.excludedExtensions = {".LOG"};
    subject.selection.config.pathAliases = {{"n", "m"}};
    subject.Select({"a.log"});
    subject.Seal("a.log");
    subject.Seal("A.log");
    subject.LeaveOut(LeftOutReason::TooLarge, "big", 1);
    subject.selection.skipped = {{"./many", SkipRule::SizeThreshold}};
    subject.LeaveOut(LeftOutReason::TooLarge, "many/a");
    subject.LeaveOut(LeftOutReason::Link, "link");
    subject.LeaveOut(LeftOutReason::Unlistable, "closed");
    subject.LeaveOut(LeftOutReason::Unreachable, "listed/a");
    constexpr std::size_t kRules = 17;
    RuleWarnings warnings;
    EXPECT_EQ(LintSelection({subject.selection,
                             subject.second,
                             subject.outputs,
                             subject.outputs,
                             subject.places,
                             subject.files,
                             {}},
                            warnings),
              ResultCode::Ok);
    EXPECT_EQ(warnings.size(), kRules);
}

}  // namespace
}  // namespace sealkeeper
