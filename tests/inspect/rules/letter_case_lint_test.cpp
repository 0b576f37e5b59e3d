// The warnings about names that differ in letter case alone.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "inspect/rules/selection_lint.h"

namespace sealkeeper {
namespace {

using Paths = std::vector<std::string>;

// "message / cure" for each warning.
Paths ToldOf(const std::vector<JudgedFile>& files) {
    const Selection selection;
    const PlannedOutputs outputs;
    RuleWarnings warnings;
    LintLetterCase({selection, selection, outputs, outputs, RulePlaces(), files}, warnings);
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

const std::string kOnlyOne =
    " / Rename one: where file systems ignore letter case, only one of them can be installed";
const std::string kFilesCure = kOnlyOne + ", and verify fails for the other.";
const std::string kLeftOutCure =
    " / Rename or remove what is left out: where file systems ignore letter case, it may replace "
    "the sealed file, and verify fails.";
const std::string kDirectoriesCure =
    " / Rename one: where file systems ignore letter case, they become one directory, files of "
    "the same name replace each other, and verify fails.";

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
    EXPECT_EQ(
        Told({"Data", "data/x"}),
        Paths{"'Data' and the directory 'data' differ in letter case alone." + kOnlyOne + "."});
    EXPECT_EQ(Told({"data/deep/x", "y"}, {"Data", "DATA/z", "Y/z"}),
              (Paths{"'Data' and the directories 'DATA' and 'data' differ in letter case alone; "
                     "'DATA' and 'Data' are left out." +
                         kOnlyOne + ".",
                     "'y' and the directory 'Y' differ in letter case alone; 'Y' is left out." +
                         kOnlyOne + "."}));
    EXPECT_EQ(Told({"z"}, {"Data", "data/x"}), Paths{}) << "nothing of it is sealed";
}

TEST(LetterCase, IsToldOfADirectoryOfWhichSomethingIsSealed) {
    const std::vector<JudgedFile> files = {{"Data", 0, LeftOutReason::NotIncluded},
                                           {"data/deep/a", 0, LeftOutReason::NotIncluded},
                                           {"data/deep/b", 0, std::nullopt}};
    EXPECT_EQ(ToldOf(files),
              Paths{"'Data' and the directory 'data' differ in letter case alone; 'Data' is left "
                    "out." +
                    kOnlyOne + "."});
}

TEST(LetterCase, IsToldOfDirectoriesThatCannotBeRead) {
    EXPECT_EQ(Told({"Closed"}, {"closed"}, LeftOutReason::Unlistable),
              Paths{"'Closed' and the directory 'closed' differ in letter case alone; 'closed' is "
                    "left out." +
                    kOnlyOne + "."});
    EXPECT_EQ(
        Told({"Closed", "closed/a"}, {"closed"}, LeftOutReason::Unlistable),
        Paths{"'Closed' and the directory 'closed' differ in letter case alone." + kOnlyOne + "."})
        << "a pattern names a file in it";
    EXPECT_EQ(
        Told({"Closed/a", "closed/A"}, {"closed"}, LeftOutReason::Unlistable),
        Paths{
            "The directories 'Closed' and 'closed' differ in letter case alone and hold 1 file of the same name." +
            kDirectoriesCure});
}

TEST(LetterCase, IsToldOnceOfDirectoriesWithFilesInCommon) {
    EXPECT_EQ(
        Told({"d/Data/a", "d/Data/deep/b", "d/data/Deep/B", "d/data/c", "d/Data/e/f"},
             {"d/data/A", "d/data/E"}),
        Paths{
            "The directories 'd/Data' and 'd/data' differ in letter case alone and hold 3 files of the same name." +
            kDirectoriesCure});
}

TEST(LetterCase, IsToldInOneOfTheDirectories) {
    EXPECT_EQ(Told({"Data/A", "Data/a", "data/a"}),
              (Paths{"'Data/A' and 'Data/a' differ in letter case alone." + kFilesCure,
                     "The directories 'Data' and 'data' differ in letter case alone and hold 1 "
                     "file of the same name." +
                         kDirectoriesCure}));
}

TEST(LetterCase, IsNoMatterOfDirectoriesWithoutFilesInCommon) {
    EXPECT_EQ(Told({"Data/a", "data/b", "Data/deep/c", "data/Deep/d"}, {"."}), Paths{});
}

}  // namespace
}  // namespace sealkeeper
