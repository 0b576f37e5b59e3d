// The warnings of hole_lint.cpp.
#include <gtest/gtest.h>

#include "inspect/rules/linted_selection.h"

namespace sealkeeper {
namespace {

using Paths = std::vector<std::string>;
using test::LintedSelection;
using test::ToldBy;

TEST(LargeFiles, AreToldWithTheLargest) {
    LintedSelection subject;
    subject.selection.config.sizeThresholdBytes = 10'000'000;
    subject.places.sizeThreshold = TextPlace{4, 1};
    subject.LeaveOut(LeftOutReason::TooLarge, "a", 11'000'000);
    subject.LeaveOut(LeftOutReason::TooLarge, "b", 12'000'000);
    subject.LeaveOut(LeftOutReason::Hidden, "c", 13'000'000);
    EXPECT_EQ(
        ToldBy(LintTooLarge, subject),
        Paths{
            "4 2 files above the size threshold of 10.0 MB are silently left out, the largest 'b' with 12.0 MB. / Raise exclude_size_threshold, or name the file "
            "itself in include_paths: what is left out can be changed by anybody."});
    subject.places.patternKey = "exclude_paths";
    EXPECT_TRUE(ToldBy(LintTooLarge, subject)
                    .at(0)
                    .ends_with("Raise exclude_size_threshold, or name the file in exclude_paths if "
                               "that is meant: what is left out can be changed by anybody."));
    subject.places.sizeThreshold.reset();
    EXPECT_TRUE(ToldBy(LintTooLarge, subject).at(0).starts_with("2 files")) << "without a place";
    subject.selection.config.sizeThresholdBytes = static_cast<std::uint64_t>(-1'000'000);
    EXPECT_EQ(ToldBy(LintTooLarge, subject), Paths{}) << "told of where it is read";
}

TEST(LargeDirectories, AreToldInPlaceOfTheirFiles) {
    LintedSelection subject;
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
        ToldBy(LintTooLarge, subject),
        Paths{
            "4 1 file in 'a' is silently left out: the list of names in that directory is itself above the size threshold of 1.0 MB." +
            cure});
    subject.LeaveOut(LeftOutReason::TooLarge, "a/deep/2", 2'000'000);
    subject.LeaveOut(LeftOutReason::TooLarge, "b/c/3");
    subject.LeaveOut(LeftOutReason::ExcludedPath, "d/4");
    subject.LeaveOut(LeftOutReason::TooLarge, "big", 2'000'000);
    const Paths told = ToldBy(LintTooLarge, subject);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_TRUE(told[0].starts_with(
        "4 1 file above the size threshold of 1.0 MB is silently left out: 'big' with 2.0 MB."))
        << told[0];
    EXPECT_EQ(
        told[1],
        "4 3 files in 'a' and 'b/c' are silently left out: the list of names in each of those directories is itself above the size threshold of 1.0 MB." +
            cure);
    subject.selection.config.sizeThresholdBytes = static_cast<std::uint64_t>(-1'000'000);
    EXPECT_EQ(ToldBy(LintTooLarge, subject), Paths{}) << "told of where it is read";
}

TEST(Links, AreToldTogetherWithThoseToNothing) {
    LintedSelection subject;
    subject.LeaveOut(LeftOutReason::DanglingLink, "b");
    subject.LeaveOut(LeftOutReason::Link, "a");
    subject.Seal("c");
    EXPECT_EQ(
        ToldBy(LintLinks, subject),
        Paths{
            "'a' and 'b' are links and left out: links found in a directory are neither followed nor sealed. / "
            "Ship files in place of links."});
}

TEST(UnlistableDirectories, AreTold) {
    LintedSelection subject;
    subject.LeaveOut(LeftOutReason::Unlistable, "a");
    subject.LeaveOut(LeftOutReason::Unlistable, "b");
    EXPECT_EQ(ToldBy(LintUnlistableDirectories, subject),
              Paths{"'a' and 'b' cannot be read, so nothing in them is sealed. / Give this user "
                    "the right to read it, or write patterns that do not take it in."});
    subject.places.patternKey = "exclude_paths";
    EXPECT_EQ(ToldBy(LintUnlistableDirectories, subject),
              Paths{"'a' and 'b' cannot be read, so nothing in them is sealed. / Give this user "
                    "the right to read it, or exclude it if that is meant."});
}

// No pattern excludes it.
TEST(UnlistableDirectories, MayBeTheGameItself) {
    LintedSelection subject;
    subject.LeaveOut(LeftOutReason::Unlistable, ".");
    subject.places.patternKey = "exclude_paths";
    EXPECT_EQ(ToldBy(LintUnlistableDirectories, subject),
              Paths{"'.' cannot be read, so nothing in it is sealed. / Give this user the right to "
                    "read it."});
}

// Patterns that name a directory in it lead there all the same.
TEST(UnlistableDirectories, MayBeTheGameItselfBesideOthersThatPatternsName) {
    LintedSelection subject;
    subject.Match({{"bin", {"bin"}}});
    subject.LeaveOut(LeftOutReason::Unlistable, ".");
    const std::string game =
        "The game directory cannot be listed, so the files that are left out are not known. / Give this user the right to read it.";
    EXPECT_EQ(ToldBy(LintUnlistableDirectories, subject), Paths{game});
    subject.LeaveOut(LeftOutReason::Unlistable, "bin");
    EXPECT_EQ(
        ToldBy(LintUnlistableDirectories, subject),
        (Paths{
            game,
            "'bin' cannot be read, so nothing in it is sealed. / Give this user the right to read it, or write patterns that do not take it in."}));
}

TEST(UnreachableFiles, AreTold) {
    LintedSelection subject;
    subject.LeaveOut(LeftOutReason::Unreachable, "d/a");
    EXPECT_EQ(ToldBy(LintUnreachableFiles, subject),
              Paths{"'d/a' lies in a directory that this user may not search, and is not sealed. / "
                    "Give this user the right to search the directory, or write patterns that do "
                    "not lead into it."});
}

}  // namespace
}  // namespace sealkeeper
