// The warnings about a selection, one at a time.
#include "inspect/rules/selection_lint.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "inspect/rules/game_with_links.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<std::string>;

// The input of a rule, for each test to fill.
struct Subject {
    Selection selection;
    Selection second;
    PlannedOutputs outputs;
    RulePlaces places;
    std::vector<JudgedFile> files;

    // Sets patterns, one per line, and their matches without "./".
    void Match(const std::vector<std::pair<std::string, Paths>>& patterns,
               bool areIncludes = true) {
        CatalogueConfig& config = selection.config;
        for (const auto& [pattern, matched] : patterns) {
            (areIncludes ? config.includePaths : config.excludePaths).push_back(pattern);
            PathSet paths;
            for (const std::string& path : matched) {
                paths.insert("./" + path);
            }
            selection.matches.push_back(paths);
            places.patterns.push_back({places.patterns.size() + 1, 1});
        }
        second.config = config;
        second.matches = selection.matches;
    }

    void Select(const Paths& paths) {
        for (const std::string& path : paths) {
            selection.files.push_back({"./" + path});
        }
    }

    void LeaveOut(LeftOutReason reason, const std::string& path, std::uint64_t sizeBytes = 0) {
        files.push_back({path, sizeBytes, reason});
    }

    void Seal(const std::string& path) { files.push_back({path, 0, std::nullopt}); }
};

// "line message / cure" for each warning; the line is left out if it has none.
template <typename Rule>
Paths Told(Rule rule, const Subject& subject) {
    RuleWarnings warnings;
    static_cast<void>(rule(LintSubject{subject.selection,
                                       subject.second,
                                       subject.outputs,
                                       subject.outputs,
                                       subject.places,
                                       subject.files,
                                       {}},
                           warnings));
    Paths told;
    for (const RuleWarning& warning : warnings) {
        told.push_back((warning.line == 0 ? "" : std::to_string(warning.line) + " ") +
                       warning.message + " / " + warning.cure);
    }
    return told;
}

TEST(UnmatchedPatterns, AreSaidToSealNothing) {
    Subject subject;
    subject.Match({{"a", {"a"}}, {"b", {}}});
    EXPECT_EQ(Told(LintUnmatchedPatterns, subject),
              Paths{"2 The pattern 'b' matches nothing. / Correct it or take it out: what it was "
                    "meant for is not sealed."});
}

TEST(UnmatchedPatterns, AreSaidToExcludeNothing) {
    Subject subject;
    subject.Match({{"b*", {}}}, false);
    EXPECT_EQ(Told(LintUnmatchedPatterns, subject),
              Paths{"1 The pattern 'b*' matches nothing. / Correct it or take it out: what it was "
                    "meant for is sealed."});
}

TEST(UnmatchedPatterns, MayBeInAnotherEncodingThanTheNamesOfFiles) {
    Subject subject;
    subject.Match({{"caf\xE9*", {}}, {"caf\u00e9*", {"caf\u00e9s"}}, {"\xE9", {"\xE9"}}}, false);
    EXPECT_EQ(
        Told(LintUnmatchedPatterns, subject),
        Paths{
            "1 The pattern 'caf\xE9*' matches nothing, perhaps because it is not UTF-8. / Where the names of the files are UTF-8, save the configuration file as UTF-8 without a byte-order mark."});
}

TEST(UnmatchedPatterns, AreNoneWhereTheSecondRunFindsSomething) {
    Subject subject;
    subject.Match({{"out/base.bin", {}}});
    subject.second.matches[0] = {"./out/base.bin"};
    EXPECT_EQ(Told(LintUnmatchedPatterns, subject), Paths{});
}

TEST(LeavingPatterns, AreToldByThemselvesAndByWhatTheyMatch) {
    Subject subject;
    subject.Match({{"../x", {}}, {"a\\..\\..\\x", {}}, {".*", {"..", ".a"}}, {"a/../b", {"b"}}});
    const auto told = [](const std::string& pattern) {
        return pattern.substr(0, 2) + "The pattern '" + pattern.substr(2) +
               "' leads out of the game directory by '..'. / Name only files of the game: on another machine there is something else beside it.";
    };
    EXPECT_EQ(Told(LintLeavingPatterns, subject),
              (Paths{told("1 ../x"), told("2 a\\..\\..\\x"), told("3 .*")}));
}

TEST(LinksOutOfGame, AreToldOncePerPattern) {
    const test::GameWithLinks game;
    Subject subject;
    subject.Match(
        {{"real", {"real"}}, {"*/?", {"out/x", "real/y", "relative/x"}}, {"../x", {"../x"}}});
    EXPECT_EQ(Told(LintLinksOutOfGame, subject),
              Paths{"2 The pattern '*/?' leads out of the game directory by the links 'out' and "
                    "'relative'. / Ship files in place of links: on another machine there is "
                    "something else where they lead."});
}

TEST(LinksOutOfGame, MayBeExcluded) {
    const test::GameWithLinks game;
    Subject subject;
    subject.Match({{"out", {"out"}}}, false);
    EXPECT_EQ(Told(LintLinksOutOfGame, subject), Paths{});
}

TEST(RepeatedFiles, AreToldAtTheLastPatternThatLeadsToThem) {
    Subject subject;
    subject.Match({{"bin", {"bin"}}, {"other", {"other"}}, {"bin/*", {"bin/a", "bin/./b"}}});
    subject.Select({"bin/a", "bin/a", "bin//b", "bin/./b", "bin/c", "other"});
    EXPECT_EQ(
        Told(LintRepeatedFiles, subject),
        Paths{
            "3 'bin/a' and 'bin/b' are sealed more than once, because several paths lead there (patterns 'bin' and 'bin/*'). / Take out the pattern 'bin/*': 'bin' seals all of it, and a file is hashed and verified once for each."});
}

TEST(RepeatedFiles, MayComeOfTheWholeGame) {
    Subject subject;
    subject.Match({{".", {"."}}, {"a", {"a"}}});
    subject.Select({"./a", "a"});
    EXPECT_EQ(
        Told(LintRepeatedFiles, subject),
        Paths{
            "2 'a' is sealed more than once, because several paths lead there (patterns '.' and 'a'). / Take out the pattern 'a': '.' seals all of it, and a file is hashed and verified once for each."});
}

// The cure of the only warning about repeated files.
std::string CureOfRepetition(const Subject& subject) {
    const std::string separator = " / ";
    const Paths told = Told(LintRepeatedFiles, subject);
    return told.size() == 1 ? told[0].substr(told[0].find(separator) + separator.size())
                            : std::to_string(told.size()) + " warnings";
}

constexpr const char* kDoNotOverlap =
    "Write patterns that do not overlap, and that still lead to every file: more than once, a file only takes longer to hash and verify.";

TEST(RepeatedFiles, ArePreventedByNoPatternWhereEachSealsFilesOfItsOwn) {
    Subject subject;
    subject.Match({{"d", {"d"}}, {"*/b", {"d/b", "e/b"}}});
    subject.Select({"d/a", "d/b", "d/b", "e/b"});
    EXPECT_EQ(CureOfRepetition(subject), kDoNotOverlap);
}

// A file that a pattern names is sealed whatever its extension, and one that a walk finds is not.
TEST(RepeatedFiles, MayBeBesideOnesThatAWalkLeavesOut) {
    Subject subject;
    subject.Match({{"d", {"d"}}, {"d/*", {"d/a", "d/x.pdb"}}});
    subject.Select({"d/a", "d/a", "d/x.pdb"});
    EXPECT_EQ(CureOfRepetition(subject), kDoNotOverlap);
}

TEST(RepeatedFiles, ArePreventedByTheOnePatternThatSealsAll) {
    Subject subject;
    subject.Match({{"d", {"d"}}, {"d/a", {"d/a"}}, {".", {"."}}, {"e", {"e"}}});
    subject.Select({"d/a", "d/a", "d/a", "d/b", "d/b", "d-b", "e"});
    const Paths told = Told(LintRepeatedFiles, subject);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_TRUE(told[0].ends_with(
        "Take out the patterns 'd' and 'd/a': '.' seals all of them, and a file is hashed and verified once for each."))
        << told[0];
}

TEST(RepeatedFiles, AreSealedByTheFirstOfEqualPatterns) {
    Subject subject;
    subject.Match({{"d/a", {"d/a"}}, {"d/./a", {"d/./a"}}, {"d//a", {"d//a"}}});
    subject.Select({"d/a", "d/./a", "d//a"});
    EXPECT_EQ(
        CureOfRepetition(subject),
        "Take out the patterns 'd/./a' and 'd//a': 'd/a' seals all of them, and a file is hashed and verified once for each.");
}

TEST(RepeatedFiles, MayBeOtherFilesWhereAPatternGoesBack) {
    Subject subject;
    subject.Match({{"a", {"a"}}, {"link/../a", {"link/../a"}}});
    subject.Select({"a", "link/../a"});
    EXPECT_EQ(CureOfRepetition(subject), kDoNotOverlap);
}

TEST(RepeatedFiles, MayComeOfOnePattern) {
    Subject subject;
    subject.Match({{"*/..", {"d/..", "e/.."}}});
    subject.Select({"d/../a", "e/../a"});
    EXPECT_EQ(
        Told(LintRepeatedFiles, subject),
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
    Subject subject;
    subject.Match({{"link", {"link"}}, {"d", {"d"}}, {"?", {"c", "e"}}});
    subject.Select({"link/a", "link/b", "d/a", "d/b", "d/c", "c", "e", "gone"});
    const std::string cure =
        " / Write patterns that lead to each file by one name only: it is hashed and verified once for each.";
    EXPECT_EQ(
        Told(LintRenamedFiles, subject),
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
    Subject subject;
    subject.Match({{"d", {"d"}}, {"../game/?", {"../game/d", "../game/e"}}, {"f", {"f"}}});
    subject.Select({"d/a", "../game/d/a", "../game/e", "f"});
    const std::string cure =
        " / Write patterns that lead to each file by one name only: it is hashed and verified once for each.";
    EXPECT_EQ(
        Told(LintRenamedFiles, subject),
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
    Subject subject;
    subject.Match({{".", {"."}}, {"./b", {"./b"}}, {"c", {"c"}}});
    subject.Select({"a", "b", "./b"});
    EXPECT_EQ(Told(LintRenamedFiles, subject), Paths{}) << "these are two files on another disk";
}

TEST(ExtensionCase, IsToldOfFilesThatDifferInItAlone) {
    Subject subject;
    subject.selection.config.excludedExtensions = {".LOG", ".pak", ".Pak", ".Pdb", "none", "."};
    subject.places.extensions = {
        {".LOG", {7, 1}}, {".pak", {8, 1}}, {".Pak", {9, 1}}, {".", {10, 1}}};
    subject.Match({}, false);
    subject.Select({"a.log", "d/B.PAK", "c.pAK", "e.PAK", "bare", "pdb", "NONE", "z."});
    subject.LeaveOut(LeftOutReason::ExcludedExtension, "a.pak");
    subject.LeaveOut(LeftOutReason::Hidden, ".x/a.pdb");
    EXPECT_EQ(
        Told(LintExtensionCase, subject),
        (Paths{
            "7 'a.log' has the extension '.LOG' in another letter case and is not left out. / Letter case counts: write \".log\", too, if such files are to be left out.",
            "9 3 files, such as 'c.pAK', have the extension '.Pak' in another letter case and are not left out. / Letter case counts: write \".PAK\", \".pAK\", too, if such files are to be left out."}));
}

TEST(ExtensionCase, NamesAFewSpellings) {
    Subject subject;
    subject.selection.config.excludedExtensions = {".pak"};
    subject.Match({}, false);
    subject.Select({"a.PAK", "b.PAk", "c.PaK"});
    EXPECT_TRUE(
        Told(LintExtensionCase, subject)
            .at(0)
            .ends_with(
                "write \".PAK\", \".PAk\", \".PaK\", too, if such files are to be left out."));
    subject.Select({"d.paK"});
    EXPECT_TRUE(
        Told(LintExtensionCase, subject)
            .at(0)
            .ends_with("write each spelling in use, too, if such files are to be left out."));
}

TEST(ExtensionCase, IsNoMatterOfAFileThatAPatternNames) {
    Subject subject;
    subject.selection.config.excludedExtensions = {".pdb"};
    subject.Match({{"*.pdb", {"named.pdb"}}, {"?.PDB", {"n.PDB"}}});
    subject.Select({"named.pdb", "n.PDB"});
    EXPECT_EQ(Told(LintExtensionCase, subject), Paths{});
}

// The outputs of a run, and a second run that selects some of them.
Subject OutputsSelected(const Paths& selected) {
    Subject subject;
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
        Told(LintOwnOutputs, OutputsSelected({"Q/base.bin", "Q/base.cer", "a"})),
        Paths{
            "9 A second run seals 'Q/base.bin' and 'Q/base.cer' of the first one and then replaces them, so verify fails. / Add \"Q\" to exclude_paths."});
    EXPECT_EQ(
        Told(LintOwnOutputs, OutputsSelected({"Q/base.cer", "Q/runtime.conf"})),
        Paths{
            "9 A second run seals 'Q/base.cer' of the first one and then replaces it, so verify fails once another certificate is used. / Add \"Q\" to exclude_paths."});
}

// Excluding the folder would leave the game's own files in it unsealed.
TEST(OwnOutputs, AreNamedThemselvesWhereTheirFolderHasMore) {
    const Paths told = Told(LintOwnOutputs, OutputsSelected({"Q/base.bin", "Q/client.so"}));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told[0].ends_with("Add \"Q/base.bin\" to exclude_paths.")) << told[0];
}

// The configuration language has no way to write them.
TEST(OwnOutputs, AreExcludedByWildcardsForCharactersThatNoListHolds) {
    Subject subject = OutputsSelected({"a\"]\\\nb.bin"});
    subject.outputs.catalogue = "a\"]\\\nb.bin";
    EXPECT_TRUE(
        Told(LintOwnOutputs, subject).at(0).ends_with("Add \"a????b.bin\" to exclude_paths."));
}

TEST(OwnOutputs, MayBeTheSettingsAlone) {
    EXPECT_EQ(Told(LintOwnOutputs, OutputsSelected({"Q/runtime.conf"})),
              Paths{"9 A run seals 'Q/runtime.conf', which it writes itself and which has a "
                    "signature of its own. / Add \"Q\" to exclude_paths."});
}

TEST(OwnOutputs, AreNotOtherFilesOfTheirNames) {
    EXPECT_EQ(Told(LintOwnOutputs, OutputsSelected({"base.bin", "Q/Q/base.cer"})), Paths{});
}

TEST(OwnOutputs, AreToldAtTheIncludePatternThatLeadsToThem) {
    Subject subject = OutputsSelected({"Q/base.bin"});
    subject.places.patternKey = "include_paths";
    subject.Match({{"a", {"a"}}, {"Q/b*", {"Q/base.bin"}}, {"Q", {"Q"}}});
    EXPECT_EQ(
        Told(LintOwnOutputs, subject),
        Paths{
            "2 A second run seals 'Q/base.bin' of the first one and then replaces it, so verify fails. / Write in include_paths what to hash, but not \"Q\"."});
}

TEST(ImpossibleNames, AreNoUtf8OrTooLong) {
    Subject subject;
    subject.Select({"a\xFF", "b\xFE", "b\xFE", std::string(255, 'x'), std::string(256, 'y')});
    EXPECT_EQ(
        Told(LintImpossibleNames, subject),
        (Paths{"'a\xFF' and 'b\xFE' are not UTF-8: the catalogue lists empty files 'U82W_ERROR' in "
               "their place, and verify fails. / Rename it, or leave it out.",
               "'" + std::string(256, 'y') +
                   "' is longer than the 255 UTF-16 units that a catalogue has room for: generate "
                   "fails at it. / Shorten its names, or leave it out."}));
}

TEST(Backslashes, AreToldOfNamesOnDisk) {
    Subject subject;
    subject.Select({"a\\b", "c/d"});
    EXPECT_EQ(
        Told(LintBackslashNames, subject),
        Paths{"'a\\b' has a backslash, which the catalogue holds as a slash: verify looks "
              "for another file and fails. / Rename it, or write patterns that do not take it "
              "in."});
    subject.places.patternKey = "exclude_paths";
    EXPECT_TRUE(Told(LintBackslashNames, subject)
                    .at(0)
                    .ends_with("Rename it, or exclude it by a pattern with '?' in place of the "
                               "backslash."));
}

TEST(UnhashableFiles, AreNoRegularOnes) {
    Subject subject;
    subject.selection.files = {{"./a"}, {"./fifo", 0, FileType::Fifo}};
    EXPECT_EQ(
        Told(LintUnhashableFiles, subject),
        Paths{"'fifo' is not a regular file: the catalogue lists it as an empty one, and verify "
              "fails. / Write patterns that do not match it."});
}

TEST(UnhashableFiles, AreThoseInDirectoriesThatCannotBeSearched) {
    Subject subject;
    subject.selection.files = {{"./d/a", 0, FileType::Missing}, {"./d/b", 0, FileType::Missing}};
    EXPECT_EQ(Told(LintUnhashableFiles, subject),
              Paths{"'d/a' and 'd/b' lie in directories that this user may not search: the "
                    "catalogue lists them as empty files, and verify fails. / Give this user the "
                    "right to search the directory."});
}

TEST(UnhashableFiles, AreNotReadWhereTheirNamesAreNoUtf8) {
    Subject subject;
    subject.selection.files = {{"./\xFF", 0, FileType::Fifo}, {"./\xFE", 0, FileType::Missing}};
    EXPECT_EQ(Told(LintUnhashableFiles, subject), Paths{});
}

TEST(Aliases, AreToldWithHowManyPathsTheyChange) {
    Subject subject;
    subject.selection.config.pathAliases = {{"Bin", "b"}, {"Data", "d"}, {"DataX", "x"}};
    subject.places.aliases = {{"Bin", {5, 1}}, {"Data", {6, 1}}, {"DataX", {7, 1}}};
    subject.Select({"DataX/1", "Data/2", "e"});
    const std::string useless =
        "' changes no path: none contains it, or another alias applies first. / Correct it or take it "
        "out.";
    EXPECT_EQ(Told(LintAliasUses, subject),
              (Paths{"5 The alias 'Bin" + useless,
                     "6 The alias 'Data' changes the stored paths of 2 files: verify looks for "
                     "another file in place of each, and usually fails. / Take it out, "
                     "unless these files are checked by a client that knows aliases and never by "
                     "verify.",
                     "7 The alias 'DataX" + useless}));
}

TEST(LargeFiles, AreToldWithTheLargest) {
    Subject subject;
    subject.selection.config.sizeThresholdBytes = 10'000'000;
    subject.places.sizeThreshold = TextPlace{4, 1};
    subject.LeaveOut(LeftOutReason::TooLarge, "a", 11'000'000);
    subject.LeaveOut(LeftOutReason::TooLarge, "b", 12'000'000);
    subject.LeaveOut(LeftOutReason::Hidden, "c", 13'000'000);
    EXPECT_EQ(
        Told(LintTooLarge, subject),
        Paths{
            "4 2 files above the size threshold of 10.0 MB are silently left out, the largest 'b' with 12.0 MB. / Raise exclude_size_threshold, or name the file "
            "itself in include_paths: what is left out can be changed by anybody."});
    subject.places.patternKey = "exclude_paths";
    EXPECT_TRUE(Told(LintTooLarge, subject)
                    .at(0)
                    .ends_with("Raise exclude_size_threshold, or name the file in exclude_paths if "
                               "that is meant: what is left out can be changed by anybody."));
    subject.places.sizeThreshold.reset();
    EXPECT_TRUE(Told(LintTooLarge, subject).at(0).starts_with("2 files")) << "without a place";
    subject.selection.config.sizeThresholdBytes = static_cast<std::uint64_t>(-1'000'000);
    EXPECT_EQ(Told(LintTooLarge, subject), Paths{}) << "told of where it is read";
}

TEST(LargeDirectories, AreToldInPlaceOfTheirFiles) {
    Subject subject;
    subject.selection.config.sizeThresholdBytes = 1'000'000;
    subject.places.sizeThreshold = TextPlace{4, 1};
    subject.selection.skipped = {{"./a", SkipRule::SizeThreshold},
                                 {"./b/c", SkipRule::SizeThreshold},
                                 {"./d", SkipRule::ExcludedPath},
                                 {"./big", SkipRule::SizeThreshold}};
    subject.LeaveOut(LeftOutReason::TooLarge, "a/1", 5);
    const std::string cure =
        " / Raise exclude_size_threshold, or spread the files over more directories.";
    EXPECT_EQ(
        Told(LintTooLarge, subject),
        Paths{
            "4 1 file in 'a' is silently left out: the list of names in that directory is itself above the size threshold of 1.0 MB." +
            cure});
    subject.LeaveOut(LeftOutReason::TooLarge, "a/deep/2", 2'000'000);
    subject.LeaveOut(LeftOutReason::TooLarge, "b/c/3");
    subject.LeaveOut(LeftOutReason::ExcludedPath, "d/4");
    subject.LeaveOut(LeftOutReason::TooLarge, "big", 2'000'000);
    const Paths told = Told(LintTooLarge, subject);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_TRUE(told[0].starts_with(
        "4 1 file above the size threshold of 1.0 MB is silently left out: 'big' with 2.0 MB."))
        << told[0];
    EXPECT_EQ(
        told[1],
        "4 3 files in 'a' and 'b/c' are silently left out: the list of names in each of those directories is itself above the size threshold of 1.0 MB." +
            cure);
    subject.selection.config.sizeThresholdBytes = static_cast<std::uint64_t>(-1'000'000);
    EXPECT_EQ(Told(LintTooLarge, subject), Paths{}) << "told of where it is read";
}

TEST(Links, AreToldTogetherWithThoseToNothing) {
    Subject subject;
    subject.LeaveOut(LeftOutReason::DanglingLink, "b");
    subject.LeaveOut(LeftOutReason::Link, "a");
    subject.Seal("c");
    EXPECT_EQ(
        Told(LintLinks, subject),
        Paths{
            "'a' and 'b' are links and left out: links found in a directory are neither followed nor sealed. / "
            "Ship files in place of links."});
}

TEST(UnlistableDirectories, AreTold) {
    Subject subject;
    subject.LeaveOut(LeftOutReason::Unlistable, "a");
    subject.LeaveOut(LeftOutReason::Unlistable, "b");
    EXPECT_EQ(Told(LintUnlistableDirectories, subject),
              Paths{"'a' and 'b' cannot be read, so nothing in them is sealed. / Give this user "
                    "the right to read it, or write patterns that do not take it in."});
    subject.places.patternKey = "exclude_paths";
    EXPECT_EQ(Told(LintUnlistableDirectories, subject),
              Paths{"'a' and 'b' cannot be read, so nothing in them is sealed. / Give this user "
                    "the right to read it, or exclude it if that is meant."});
}

// No pattern excludes it.
TEST(UnlistableDirectories, MayBeTheGameItself) {
    Subject subject;
    subject.LeaveOut(LeftOutReason::Unlistable, ".");
    subject.places.patternKey = "exclude_paths";
    EXPECT_EQ(Told(LintUnlistableDirectories, subject),
              Paths{"'.' cannot be read, so nothing in it is sealed. / Give this user the right to "
                    "read it."});
}

// Patterns that name a directory in it lead there all the same.
TEST(UnlistableDirectories, MayBeTheGameItselfBesideOthersThatPatternsName) {
    Subject subject;
    subject.Match({{"bin", {"bin"}}});
    subject.LeaveOut(LeftOutReason::Unlistable, ".");
    const std::string game =
        "The game directory cannot be listed, so the files that are left out are not known. / Give this user the right to read it.";
    EXPECT_EQ(Told(LintUnlistableDirectories, subject), Paths{game});
    subject.LeaveOut(LeftOutReason::Unlistable, "bin");
    EXPECT_EQ(
        Told(LintUnlistableDirectories, subject),
        (Paths{
            game,
            "'bin' cannot be read, so nothing in it is sealed. / Give this user the right to read it, or write patterns that do not take it in."}));
}

TEST(UnreachableFiles, AreTold) {
    Subject subject;
    subject.LeaveOut(LeftOutReason::Unreachable, "d/a");
    EXPECT_EQ(Told(LintUnreachableFiles, subject),
              Paths{"'d/a' lies in a directory that this user may not search, and is not sealed. / "
                    "Give this user the right to search the directory, or write patterns that do "
                    "not lead into it."});
}

TEST(SelectionLint, AsksEveryRule) {
    const test::TempDirectory directory;
    fs::create_directory(directory / "game");
    fs::create_symlink("../game", directory / "beside");
    const test::ScopedCurrentDirectory here(directory / "game");
    fs::create_directory_symlink("..", "out");
    directory.WriteFile("game/a", "1");
    fs::create_symlink("a", "link to a");
    Subject subject = OutputsSelected({"Q/base.bin"});
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
