// The two modes of the collector: what it prints when it resolves patterns, and what it collects
// from included paths.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "config/file_collector.h"
#include "config/pattern_messages.h"
#include "support/captured_output.h"
#include "support/found_files.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::CapturedOutput;
using test::Matched;
using test::NotMatched;
using test::ScopedCurrentDirectory;
using test::ScopedLogThreshold;
using test::TempDirectory;

using Files = std::vector<std::wstring>;
using test::PathsOf;

constexpr const char* kNothingExcluded =
    "[Warn] exclude_paths was specified but did not match any files.\n";
constexpr const char* kNothingIncluded =
    "[Err!] include_paths was specified but did not match any files.\n";

struct Collected {
    bool resolved = false;
    std::string resolveOutput;
    // In byte order, since the order of included paths is unspecified.
    Files files;
    std::string walkOutput;
};

// Runs a collector with `rules` in `game`. Verbose messages are on while it resolves, the trace
// while it walks.
Collected CollectBy(const TempDirectory& game, const std::string& rules,
                    const std::string& removedBetween = "") {
    const ScopedCurrentDirectory inGame(game.Path());
    ConfigDocument document;
    EXPECT_TRUE(document.ParseConfigText("s {" + rules + "\n}\n"));
    std::string name = "s";
    FileCollector collector(game.Path() + "/");
    Collected collected;
    {
        CapturedOutput ignored;
        EXPECT_EQ(collector.ApplyCatalogueRules(document.GetSection(name)), ResultCode::Ok);
    }
    {
        const ScopedLogThreshold verbose(LogLevel::Verbose);
        CapturedOutput output;
        collected.resolved = collector.ResolvePaths() == ResultCode::Ok;
        collected.resolveOutput = output.Take();
    }
    if (!removedBetween.empty()) {
        fs::remove_all(removedBetween);
    }
    const ScopedLogThreshold trace(LogLevel::Trace);
    CapturedOutput output;
    std::vector<FoundFile> files;
    EXPECT_EQ(collector.CollectFiles(kWholeDirectory, kEveryFilePattern, files), ResultCode::Ok);
    collected.files = PathsOf(files);
    collected.walkOutput = output.Take();
    std::sort(collected.files.begin(), collected.files.end());
    return collected;
}

TEST(FileCollectorModes, ExcludeModeListsItsPaths) {
    const TempDirectory game;
    game.WriteFile("a", "");
    const Collected collected = CollectBy(game, "exclude_paths=[\"a\"]");
    EXPECT_TRUE(collected.resolved);
    EXPECT_EQ(collected.resolveOutput, Matched("./a") + "[Verb] Excluded path: './a'\n");
    EXPECT_EQ(collected.files, Files{});
}

TEST(FileCollectorModes, ExcludeModeGoesOnWithoutAMatch) {
    const TempDirectory game;
    game.WriteFile("a", "");
    const Collected collected = CollectBy(game, "exclude_paths=[\"b\",\"*.c\"]");
    EXPECT_TRUE(collected.resolved);
    EXPECT_EQ(collected.resolveOutput, NotMatched("./b") + NotMatched("./*.c") + kNothingExcluded);
    EXPECT_EQ(collected.files, Files{L"./a"});
}

TEST(FileCollectorModes, AnEmptyListIsExcludeModeWithoutAMatch) {
    const TempDirectory game;
    game.WriteFile("a", "");
    for (const char* rules : {"exclude_paths=[ ]", "include_paths=[ ]", "include_paths=[\"\"]"}) {
        const Collected collected = CollectBy(game, rules);
        EXPECT_TRUE(collected.resolved) << rules;
        EXPECT_EQ(collected.resolveOutput, kNothingExcluded) << rules;
        EXPECT_EQ(collected.files, Files{L"./a"}) << rules;
    }
}

TEST(FileCollectorModes, ExcludedPathAddedBeforeIsListedToo) {
    const TempDirectory game;
    const ScopedCurrentDirectory inGame(game.Path());
    FileCollector collector("/");
    collector.AddExcludedPath("./x");
    const ScopedLogThreshold verbose(LogLevel::Verbose);
    CapturedOutput output;
    EXPECT_EQ(collector.ResolvePaths(), ResultCode::Ok);
    EXPECT_EQ(output.Take(), std::string(kNothingExcluded) + "[Verb] Excluded path: './x'\n");
}

TEST(FileCollectorModes, IncludeModeCallsItsPathsExcludedToo) {
    const TempDirectory game;
    game.WriteFile("a", "");
    const Collected collected = CollectBy(game, "include_paths=[\"a\",\"b\"]");
    EXPECT_TRUE(collected.resolved);
    EXPECT_EQ(collected.resolveOutput,
              Matched("./a") + NotMatched("./b") + "[Verb] Excluded path: './a'\n");
    EXPECT_EQ(collected.files, Files{L"./a"});
    EXPECT_EQ(collected.walkOutput, "");
}

TEST(FileCollectorModes, IncludeModeFailsWithoutAMatch) {
    const TempDirectory game;
    game.WriteFile("a", "");
    const Collected collected = CollectBy(game, "include_paths=[\"b\",\"*.c\"]");
    EXPECT_FALSE(collected.resolved);
    EXPECT_EQ(collected.resolveOutput, NotMatched("./b") + NotMatched("./*.c") + kNothingIncluded);
}

TEST(FileCollectorModes, NamedFilesAreTakenWhateverTheRules) {
    const TempDirectory game;
    game.WriteFile(".hidden", "");
    game.WriteFile("a.pdb", "");
    game.WriteFile("noext", "");
    game.WriteFile("big.dat", "");
    fs::resize_file(game / "big.dat", 20'000'000);
    const Collected collected = CollectBy(
        game,
        "include_paths=[\".hidden\",\"a.pdb\",\"noe*\",\"big.dat\"] exclude_extensions=[\".pdb\"] "
        "exclude_size_threshold=10; ignore_files_without_extension=true");
    EXPECT_EQ(collected.files, (Files{L"./.hidden", L"./a.pdb", L"./big.dat", L"./noext"}));
    EXPECT_EQ(collected.walkOutput, "");
}

TEST(FileCollectorModes, IncludedDirectoriesAreWalkedByTheRules) {
    const TempDirectory game;
    for (const char* name :
         {"bin/.hidden", "bin/a.pdb", "bin/b.dat", "bin/noext", "bin/c/d.dat", "other/x.dat"}) {
        game.WriteFile(name, "");
    }
    const Collected collected = CollectBy(game,
                                          "include_paths=[\"bin/\"] exclude_extensions=[\".pdb\"] "
                                          "ignore_files_without_extension=true");
    EXPECT_EQ(collected.files, (Files{L"./bin/b.dat", L"./bin/c/d.dat"}));
    EXPECT_EQ(collected.walkOutput,
              "[Verb] RecursePath './bin/*.*'.\n"
              "[Verb] Skipping file by rule ignore_files_without_extensions './bin/noext'.\n"
              "[Verb] RecursePath './bin/c/*.*'.\n"
              "[Verb] Skipping file by rule exclude_extensions: './bin/a.pdb'.\n");
}

TEST(FileCollectorModes, AFileReachedTwiceAppearsTwice) {
    const TempDirectory game;
    game.WriteFile("bin/a", "");
    EXPECT_EQ(CollectBy(game, "include_paths=[\"bin\",\"bin/a\",\"bin/a\",\"bin/?\"]").files,
              (Files{L"./bin/a", L"./bin/a"}));
    EXPECT_EQ(CollectBy(game, "include_paths=[\"bin/a\",\"./bin/a\"]").files,
              (Files{L"././bin/a", L"./bin/a"}));
}

TEST(FileCollectorModes, IncludeModeWalksTheWholeDirectory) {
    const TempDirectory game;
    game.WriteFile("a", "");
    const Collected collected = CollectBy(game, "include_paths=[\".\"]");
    EXPECT_EQ(collected.files, Files{L"././a"});
    EXPECT_EQ(collected.walkOutput, "[Verb] RecursePath '././*.*'.\n");
}

TEST(FileCollectorModes, IncludedLinks) {
    const TempDirectory game;
    game.WriteFile("dir/a", "");
    fs::create_directory_symlink("dir", game / "link_dir");
    fs::create_symlink("dir/a", game / "link_file");
    EXPECT_EQ(CollectBy(game, "include_paths=[\"link_*\"]").files,
              (Files{L"./link_dir/a", L"./link_file"}));
    EXPECT_EQ(CollectBy(game, "include_paths=[\"link_dir\",\"link_file\"]").files,
              (Files{L"./link_dir/a", L"./link_file"}));
}

TEST(FileCollectorModes, IncludedFifoIsTakenByAWildcardOnly) {
    const TempDirectory game;
    game.WriteFile("a", "");
    ASSERT_EQ(mkfifo((game / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(CollectBy(game, "include_paths=[\"fif*\"]").files, Files{L"./fifo"});
    EXPECT_EQ(CollectBy(game, "include_paths=[\"fifo\",\"a\"]").files, Files{L"./a"});
}

TEST(FileCollectorModes, DanglingLinkFoundByAWildcardCannotBeOpened) {
    const TempDirectory game;
    fs::create_symlink("nowhere", game / "link");
    const Collected collected = CollectBy(game, "include_paths=[\"lin?\"]");
    EXPECT_TRUE(collected.resolved);
    EXPECT_EQ(collected.files, Files{});
    // Deliberately without a line feed.
    EXPECT_EQ(collected.walkOutput, "[Err!] The following path couldn't be opened: './link'. (" +
                                        std::to_string(ENOENT) + ")");
}

TEST(FileCollectorModes, IncludedPathThatVanishes) {
    const TempDirectory game;
    game.WriteFile("dir/a", "");
    const Collected collected = CollectBy(game, "include_paths=[\"dir/a\"]", game / "dir");
    EXPECT_EQ(collected.files, Files{});
    EXPECT_EQ(collected.walkOutput, "[Err!] The following path couldn't be opened: './dir/a'. (" +
                                        std::to_string(ENOENT) + ")");
}

TEST(FileCollectorModes, ExtraExcludedPathBindsTheWalkOfAnIncludedDirectory) {
    const TempDirectory game;
    game.WriteFile("dir/a", "");
    game.WriteFile("dir/b", "");
    const ScopedCurrentDirectory inGame(game.Path());
    ConfigDocument document;
    ASSERT_TRUE(document.ParseConfigText("s {include_paths=[\"dir\"]\n}"));
    std::string name = "s";
    FileCollector collector("/");
    CapturedOutput ignored;
    ASSERT_EQ(collector.ApplyCatalogueRules(document.GetSection(name)), ResultCode::Ok);
    ASSERT_EQ(collector.ResolvePaths(), ResultCode::Ok);
    collector.AddExcludedPath("./dir/a");
    std::vector<FoundFile> files;
    EXPECT_EQ(collector.CollectFiles(kWholeDirectory, kEveryFilePattern, files), ResultCode::Ok);
    EXPECT_EQ(PathsOf(files), Files{L"./dir/b"});
}

}  // namespace
}  // namespace sealkeeper
