#include "inspect/rules/judged_files.h"

#include <gtest/gtest.h>

#include <utility>

namespace sealkeeper {
namespace {

struct Case {
    SkipRule rule;
    ItemKind kind;
    LeftOutReason reason;
};

std::vector<std::pair<std::string, std::optional<LeftOutReason>>> Told(
    const Selection& selection, const std::vector<InventoryItem>& inventory) {
    std::vector<std::pair<std::string, std::optional<LeftOutReason>>> told;
    for (const JudgedFile& file : JudgeFiles(selection, inventory)) {
        told.emplace_back(file.path, file.leftOut);
    }
    return told;
}

using Pairs = std::vector<std::pair<std::string, std::optional<LeftOutReason>>>;

TEST(JudgedFiles, EachRuleHasItsReason) {
    const Case cases[] = {
        {SkipRule::HiddenName, ItemKind::RegularFile, LeftOutReason::Hidden},
        {SkipRule::ExcludedPath, ItemKind::RegularFile, LeftOutReason::ExcludedPath},
        {SkipRule::SizeThreshold, ItemKind::RegularFile, LeftOutReason::TooLarge},
        {SkipRule::SizeThreshold, ItemKind::Link, LeftOutReason::Link},
        {SkipRule::SizeThreshold, ItemKind::DanglingLink, LeftOutReason::DanglingLink},
        {SkipRule::SizeThreshold, ItemKind::SpecialFile, LeftOutReason::NotRegularFile},
        {SkipRule::SizeThreshold, ItemKind::UnlistableDirectory, LeftOutReason::Unlistable},
        {SkipRule::ExcludedExtension, ItemKind::RegularFile, LeftOutReason::ExcludedExtension},
        {SkipRule::NoExtension, ItemKind::RegularFile, LeftOutReason::NoExtension},
        {SkipRule::OtherType, ItemKind::Link, LeftOutReason::Link},
        {SkipRule::OtherType, ItemKind::DanglingLink, LeftOutReason::DanglingLink},
        {SkipRule::OtherType, ItemKind::SpecialFile, LeftOutReason::NotRegularFile},
        {SkipRule::OtherType, ItemKind::RegularFile, LeftOutReason::Unreachable},
        {SkipRule::OtherType, ItemKind::UnlistableDirectory, LeftOutReason::Unlistable},
        {SkipRule::Unlistable, ItemKind::UnlistableDirectory, LeftOutReason::Unlistable},
    };
    for (const Case& one : cases) {
        Selection selection;
        selection.skipped = {{"./d/a", one.rule}};
        EXPECT_EQ(Told(selection, {{"d/a", one.kind}}), (Pairs{{"d/a", one.reason}}))
            << LeftOutReasonText(one.reason);
    }
}

TEST(JudgedFiles, ALargeFileThatItsExtensionLeavesOutIsToldByThat) {
    Selection selection;
    selection.config.excludedExtensions = {".pdb"};
    selection.config.skipFilesWithoutExtension = true;
    const std::vector<InventoryItem> inventory = {{"a.pdb", ItemKind::RegularFile},
                                                  {"b.pak", ItemKind::RegularFile},
                                                  {"d.x/c", ItemKind::RegularFile},
                                                  {"e.pdb", ItemKind::Link}};
    for (const InventoryItem& item : inventory) {
        selection.skipped.push_back({"./" + item.path, SkipRule::SizeThreshold});
    }
    EXPECT_EQ(Told(selection, inventory), (Pairs{{"a.pdb", LeftOutReason::ExcludedExtension},
                                                 {"b.pak", LeftOutReason::TooLarge},
                                                 {"d.x/c", LeftOutReason::NoExtension},
                                                 {"e.pdb", LeftOutReason::Link}}));
}

TEST(JudgedFiles, ADirectoryThatIsLostAfterTheWalkIsUnlistable) {
    const std::vector<InventoryItem> inventory = {{"d", ItemKind::UnlistableDirectory}};
    Selection selection;
    selection.config.excludePaths = {"a"};
    EXPECT_EQ(Told(selection, inventory), (Pairs{{"d", LeftOutReason::Unlistable}}));
    selection.config.excludePaths = {};
    selection.config.includePaths = {"a"};
    EXPECT_EQ(Told(selection, inventory), (Pairs{{"d", LeftOutReason::NotIncluded}}));
}

TEST(JudgedFiles, TheGameIsUnlistableWhateverIsIncluded) {
    Selection selection;
    selection.config.includePaths = {"a"};
    EXPECT_EQ(Told(selection, {{"", ItemKind::UnlistableDirectory}}),
              (Pairs{{".", LeftOutReason::Unlistable}}));
}

TEST(JudgedFiles, ADirectoryThatTheWalkCouldNotListIsToldOnceWhereverItLies) {
    Selection selection;
    selection.skipped = {{"./d", SkipRule::Unlistable},
                         {"./bin", SkipRule::Unlistable},
                         {"././/bin", SkipRule::Unlistable},
                         {"./../beside", SkipRule::Unlistable},
                         {"./gone", SkipRule::OtherType}};
    EXPECT_EQ(Told(selection, {{"d", ItemKind::UnlistableDirectory}}),
              (Pairs{{"../beside", LeftOutReason::Unlistable},
                     {"bin", LeftOutReason::Unlistable},
                     {"d", LeftOutReason::Unlistable}}));
}

TEST(JudgedFiles, ADirectoryWithoutFilesIsNotJudged) {
    EXPECT_EQ(Told(Selection(), {{"d", ItemKind::DirectoryWithoutFiles}}), Pairs{});
}

TEST(JudgedFiles, ADirectorysRuleHoldsForWhatItHolds) {
    Selection selection;
    selection.skipped = {{"./d", SkipRule::ExcludedPath}, {"./d/e/.f", SkipRule::HiddenName}};
    EXPECT_EQ(Told(selection, {{"d/e/a", ItemKind::RegularFile},
                               {"d/e/.f/b", ItemKind::RegularFile},
                               {"de/c", ItemKind::RegularFile}}),
              (Pairs{{"d/e/.f/b", LeftOutReason::Hidden},
                     {"d/e/a", LeftOutReason::ExcludedPath},
                     {"de/c", LeftOutReason::NotIncluded}}));
}

TEST(JudgedFiles, ASealedFileStandsAsOftenAsItIsListedAndIsNotLeftOut) {
    Selection selection;
    selection.files = {{"./d/a", 1}, {"./d//a", 1}};
    selection.skipped = {{"./d", SkipRule::ExcludedPath}};
    EXPECT_EQ(Told(selection, {{"d/a", ItemKind::RegularFile, 1}}),
              (Pairs{{"d//a", std::nullopt}, {"d/a", std::nullopt}}));
}

TEST(JudgedFiles, ALinkToSealedFilesStandsForNothing) {
    Selection selection;
    selection.files = {{"./link/a", 1}};
    const std::vector<InventoryItem> inventory = {
        {"link", ItemKind::Link}, {"lin", ItemKind::Link}, {"links", ItemKind::Link}};
    EXPECT_EQ(Told(selection, inventory), (Pairs{{"lin", LeftOutReason::NotIncluded},
                                                 {"link/a", std::nullopt},
                                                 {"links", LeftOutReason::NotIncluded}}));
    // It leads to the output folder before that is made.
    EXPECT_EQ(Told(selection, {{"link", ItemKind::DanglingLink}}),
              (Pairs{{"link/a", std::nullopt}}));
}

}  // namespace
}  // namespace sealkeeper
