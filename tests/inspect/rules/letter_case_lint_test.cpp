// The warnings about names that differ in letter case alone.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "inspect/rules/selection_lint.h"

namespace sealkeeper {
namespace {

using Paths = std::vector<std::string>;

// "message / cure" for each warning.
Paths ToldOf(const std::vector<JudgedFile>& files, const Paths& directoriesWithoutFiles = {}) {
    const Selection selection;
    const PlannedOutputs outputs;
    RuleWarnings warnings;
    const RulePlaces places;
    LintLetterCase({selection, selection, outputs, outputs, places, files, directoriesWithoutFiles},
                   warnings);
    Paths told;
    for (const RuleWarning& warning : warnings) {
        told.push_back(warning.message + " / " + warning.cure);
    }
    return told;
}

Paths Told(const Paths& sealed, const Paths& leftOut = {},
           LeftOutReason reason = LeftOutReason::NotIncluded) {
    std::vector<JudgedFile> files;
    for (const std::string& path : sealed) {
        files.push_back({path, 0, std::nullopt});
    }
    for (const std::string& path : leftOut) {
        files.push_back({path, 0, reason});
    }
    return ToldOf(files);
}

const std::string kFilesCure =
    " / Rename one: where file systems ignore letter case, only one of them can be installed, and verify may fail.";
const std::string kFileAndDirectoryCure =
    " / Rename one: where file systems ignore letter case, a file and a directory of one name cannot both be installed.";
const std::string kLeftOutCure =
    " / Rename or remove what is left out: where file systems ignore letter case, it may replace the sealed file, and verify may fail.";
const std::string kDirectoriesCure =
    " / Rename one: where file systems ignore letter case, they become one directory, in which names that clash cannot both be installed, and verify may fail.";

TEST(LetterCase, IsToldOfEachGroup) {
    EXPECT_EQ(Told({"B", "a", "A", "b", "c", "c"}),
              (Paths{"'A' and 'a' differ in letter case alone." + kFilesCure,
                     "'B' and 'b' differ in letter case alone." + kFilesCure}));
}

TEST(LetterCase, IsToldOfFilesThatAreLeftOutBesideSealedOnes) {
    EXPECT_EQ(
        Told({"d/a"}, {"d/A", "d/b", "d/B"}),
        Paths{"'d/A' and 'd/a' differ in letter case alone; 'd/A' is left out." + kLeftOutCure});
    EXPECT_EQ(
        Told({"aa", "AA"}, {"aA", "Aa"}),
        Paths{"'AA', 'Aa', 'aA' and 1 more differ in letter case alone; 'Aa' and 'aA' are left "
              "out." +
              kFilesCure});
}

TEST(LetterCase, IsToldOfAFileBesideADirectory) {
    EXPECT_EQ(Told({"Data", "data/x"}),
              Paths{"'Data' and the directory 'data' differ in letter case alone." +
                    kFileAndDirectoryCure});
    EXPECT_EQ(Told({"data/deep/x", "y"}, {"Data", "DATA/z", "Y/z"}),
              (Paths{"'Data' and the directories 'DATA' and 'data' differ in letter case alone; "
                     "'DATA' and 'Data' are left out." +
                         kFileAndDirectoryCure,
                     "'y' and the directory 'Y' differ in letter case alone; 'Y' is left out." +
                         kFileAndDirectoryCure}));
    EXPECT_EQ(Told({"z"}, {"Data", "data/x"}), Paths{}) << "nothing of it is sealed";
}

TEST(LetterCase, IsToldOfADirectoryOfWhichSomethingIsSealed) {
    const std::vector<JudgedFile> files = {{"Data", 0, LeftOutReason::NotIncluded},
                                           {"data/deep/a", 0, LeftOutReason::NotIncluded},
                                           {"data/deep/b", 0, std::nullopt}};
    EXPECT_EQ(ToldOf(files),
              Paths{"'Data' and the directory 'data' differ in letter case alone; 'Data' is left "
                    "out." +
                    kFileAndDirectoryCure});
}

TEST(LetterCase, IsToldOfDirectoriesThatCannotBeRead) {
    EXPECT_EQ(Told({"Closed"}, {"closed"}, LeftOutReason::Unlistable),
              Paths{"'Closed' and the directory 'closed' differ in letter case alone; 'closed' is "
                    "left out." +
                    kFileAndDirectoryCure});
    EXPECT_EQ(Told({"Closed", "closed/a"}, {"closed"}, LeftOutReason::Unlistable),
              Paths{"'Closed' and the directory 'closed' differ in letter case alone." +
                    kFileAndDirectoryCure})
        << "a pattern names a file in it";
    EXPECT_EQ(
        Told({"Closed/a", "closed/A"}, {"closed"}, LeftOutReason::Unlistable),
        Paths{
            "The directories 'Closed' and 'closed' differ in letter case alone, and 1 name below them clashes." +
            kDirectoriesCure});
}

TEST(LetterCase, IsToldOnceOfDirectoriesWithFilesInCommon) {
    EXPECT_EQ(
        Told({"d/Data/a", "d/Data/deep/b", "d/data/Deep/B", "d/data/c", "d/Data/e/f"},
             {"d/data/A", "d/data/E"}),
        Paths{
            "The directories 'd/Data' and 'd/data' differ in letter case alone, and 3 names below them clash." +
            kDirectoriesCure});
}

TEST(LetterCase, IsToldOfDirectoriesThatAreLeftOut) {
    EXPECT_EQ(
        Told({"bin/a"}, {"BIN/a"}),
        Paths{
            "The directories 'BIN' and 'bin' differ in letter case alone, and 1 name below them clashes; 'BIN' is left out." +
            kDirectoriesCure});
    EXPECT_EQ(
        Told({"bin/a", "BIN/b"}, {"BIN/a"}),
        Paths{
            "The directories 'BIN' and 'bin' differ in letter case alone, and 1 name below them clashes." +
            kDirectoriesCure});
}

TEST(LetterCase, IsToldOfAFileBesideDirectoriesThatMerge) {
    EXPECT_EQ(
        Told({"DATA/a", "data/A"}, {"Data"}),
        (Paths{
            "'Data' and the directories 'DATA' and 'data' differ in letter case alone; 'Data' is left out." +
                kFileAndDirectoryCure,
            "The directories 'DATA' and 'data' differ in letter case alone, and 1 name below them clashes." +
                kDirectoriesCure}));
}

TEST(LetterCase, IsToldOfDirectoriesWithoutFiles) {
    const std::vector<JudgedFile> files = {{"data", 0, std::nullopt}, {"bin/a", 0, std::nullopt}};
    EXPECT_EQ(
        ToldOf(files, {"Data/deep", "Bin", "bin", "x"}),
        Paths{"'data' and the directory 'Data' differ in letter case alone; 'Data' is left out." +
              kFileAndDirectoryCure});
    EXPECT_EQ(
        ToldOf(files, {"bin/A", "bin/deep"}),
        Paths{
            "'bin/a' and the directory 'bin/A' differ in letter case alone; 'bin/A' is left out." +
            kFileAndDirectoryCure});
}

TEST(LetterCase, IsToldInOneOfTheDirectories) {
    EXPECT_EQ(
        Told({"Data/A", "Data/a", "data/a"}),
        (Paths{
            "'Data/A' and 'Data/a' differ in letter case alone." + kFilesCure,
            "The directories 'Data' and 'data' differ in letter case alone, and 1 name below them clashes." +
                kDirectoriesCure}));
}

TEST(LetterCase, IsNoMatterOfDirectoriesWithoutFilesInCommon) {
    EXPECT_EQ(Told({"Data/a", "data/b", "Data/deep/c", "data/Deep/d"}, {"."}), Paths{});
}

}  // namespace
}  // namespace sealkeeper
