// Rules applied to games on disk: the selection and the report.
#include "inspect/rules/rules_run.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "inspect/rules/case_folding.h"
#include "inspect/rules/second_selection.h"
#include "inspect/rules/selection.h"
#include "inspect/tree/lexical_path.h"
#include "support/quiet_log.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

std::string ConfigOf(const std::string& searchOptions) {
    return "config_info { version = 2; }\nsearch_options {\n" + searchOptions + "\n}\n";
}

std::string PlaceText(std::size_t line, std::size_t column) {
    return std::to_string(line) + ":" + std::to_string(column);
}

// A game in the current directory.
class GameUnderRules : public testing::Test {
  protected:
    GameUnderRules() { game_.WriteFile("a", "1"); }

    [[nodiscard]] Selection Select(const std::string& configText,
                                   const std::string& outputName = "base") const {
        GameWithOutputs game(game_.Path());
        Selection selection;
        EXPECT_EQ(SelectFiles({"/game.cfg", configText}, PlanOutputs(game_.Path(), outputName),
                              game, selection),
                  ResultCode::Ok);
        return selection;
    }

    [[nodiscard]] RulesReport Report(const std::string& searchOptions) const {
        const std::string text = ConfigOf(searchOptions);
        RulesReport report;
        EXPECT_EQ(RunRules({{"/game.cfg", text}, game_.Path(), "base"}, report), ResultCode::Ok);
        return report;
    }

    // "line:column message" for each warning.
    [[nodiscard]] Lines Warnings(const std::string& searchOptions) const {
        Lines lines;
        for (const RuleWarning& warning : Report(searchOptions).warnings) {
            lines.push_back(PlaceText(warning.line, warning.column) + " " + warning.message);
        }
        return lines;
    }

    const test::QuietLog quiet_;
    test::TempDirectory game_;
    test::ScopedCurrentDirectory inGame_{game_.Path()};
};

// "path size" for each file, sorted.
Lines FilesOf(const Selection& selection) {
    Lines lines;
    for (const SelectedFile& file : selection.files) {
        lines.push_back(LexicalPath(file.path) + " " + std::to_string(file.sizeBytes));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

struct RefusalCase {
    const char* name;
    std::string text;
    ResultCode code;
    const char* message;
};

class Selecting : public GameUnderRules {};

TEST_F(Selecting, RefusesWhatGenerateRefuses) {
    const RefusalCase cases[] = {
        {"empty file", "", ResultCode::InitFailedConfig,
         "Could not load or parse the configuration file: '/game.cfg'."},
        {"no version", "search_options { include_paths = [\"a\"] }\n", ResultCode::InitFailedConfig,
         "Unsupported config file version: 1."},
        {"no list", ConfigOf(""), ResultCode::InitFailedConfig,
         "Either include_paths or exclude_paths must be specified."},
        {"both lists", ConfigOf("include_paths = [\"a\"] exclude_paths = [\"b\"]"),
         ResultCode::InitFailedConfig,
         "Both include_paths and exclude_paths are specified, only one is allowed."},
        {"no match", ConfigOf("include_paths = [\"b\"]"), ResultCode::InitFailedConfig,
         "include_paths was specified but did not match any files."},
        {"unknown solution",
         ConfigOf("include_paths = [\"a\"]") +
             "runtime_configuration { anti_tamper_solution_name = \"x\" }\n",
         ResultCode::InitFailedConfig,
         "Please provide name of a supported anti-tamper solution, if the one being used is not specifically listed, use 'Generic'."},
        {"nothing left",
         ConfigOf("exclude_paths = [\"Quorvane\"] ignore_files_without_extension = true "),
         ResultCode::CatalogueError,
         "Cannot create an empty catalogue, at least all executables and libraries must be included."},
    };
    for (const RefusalCase& refused : cases) {
        const Selection selection = Select(refused.text);
        ASSERT_TRUE(selection.refusal.has_value()) << refused.name;
        EXPECT_EQ(selection.refusal->code, refused.code) << refused.name;
        EXPECT_EQ(selection.refusal->message, refused.message) << refused.name;
    }
}

TEST_F(Selecting, RefusesWhereTheFolderOfTheOutputsCannotBe) {
    const std::string text = ConfigOf("include_paths = [\"a\"]");
    const auto message = [&] { return Select(text).refusal.value_or(Refusal()).message; };
    game_.WriteFile("Quorvane", "");
    EXPECT_EQ(message(), "'Quorvane' cannot be the output directory or a part of its path.");
    EXPECT_EQ(Select(text, "mod").refusal, std::nullopt) << "a mod's outputs have no folder";
    fs::remove("Quorvane");
    fs::create_symlink("nowhere", "Quorvane");
    EXPECT_EQ(message(), "'Quorvane' cannot be the output directory or a part of its path.");
    fs::remove("Quorvane");
    game_.WriteFile("Quorvane/Certificates", "");
    EXPECT_EQ(message(),
              "'Quorvane/Certificates' cannot be the output directory or a part of its path.");
}

TEST_F(Selecting, KeepsTheMatchesOfEachPattern) {
    game_.WriteFile("b", "1");
    const Selection selection = Select(ConfigOf(R"(include_paths = ["?", "c", "b"])"));
    ASSERT_EQ(selection.matches.size(), 3U);
    EXPECT_EQ(selection.matches[0], (PathSet{"./a", "./b"}));
    EXPECT_EQ(selection.matches[1], PathSet{});
    EXPECT_EQ(selection.matches[2], PathSet{"./b"});
    EXPECT_TRUE(selection.isComplete);
    EXPECT_EQ(selection.files.size(), 2U);
}

TEST_F(Selecting, TellsSizesThatTheWalkDoesNotLookAt) {
    game_.WriteFile("d/e", "12345");
    EXPECT_EQ(FilesOf(Select(ConfigOf(R"(include_paths = ["d"] exclude_size_threshold = 0;)"))),
              Lines{"d/e 5"});
}

TEST_F(Selecting, TellsWhatIsNoRegularFile) {
    ASSERT_EQ(mkfifo("fifo", 0600), 0);
    const Selection selection = Select(ConfigOf(R"(include_paths = ["fifo*"])"));
    ASSERT_EQ(selection.files.size(), 1U);
    EXPECT_EQ(selection.files[0].type, FileType::Fifo);
}

TEST_F(Selecting, TellsByWhichRulesPathsWereSkipped) {
    game_.WriteFile(".hidden", "");
    game_.WriteFile("x.log", "");
    std::map<std::string, SkipRule> rules;
    for (const SkippedPath& skipped :
         Select(ConfigOf(R"(exclude_paths = ["Quorvane"] exclude_extensions = [".log"])"))
             .skipped) {
        rules.emplace(LexicalPath(skipped.path), skipped.rule);
    }
    EXPECT_EQ(rules, (std::map<std::string, SkipRule>{{".hidden", SkipRule::HiddenName},
                                                      {"Quorvane", SkipRule::ExcludedPath},
                                                      {"x.log", SkipRule::ExcludedExtension}}));
}

TEST_F(Selecting, FindsTheSettingsThatTheRunWrites) {
    const std::string text = ConfigOf("exclude_paths = [ ]");
    EXPECT_EQ(FilesOf(Select(text)), (Lines{"Quorvane/Certificates/runtime.conf 1108", "a 1"}));
    EXPECT_EQ(FilesOf(Select(text, "mod")), Lines{"a 1"});
}

using RulesRun = GameUnderRules;

TEST_F(RulesRun, JudgesEveryFile) {
    game_.WriteFile("b.log", "12");
    const RulesReport report =
        Report(R"(exclude_paths = ["Quorvane"] exclude_extensions = [".log"])");
    EXPECT_EQ(report.refusal, std::nullopt);
    EXPECT_TRUE(report.warnings.empty());
    ASSERT_EQ(report.files.size(), 2U);
    EXPECT_EQ(report.files[0].path, "a");
    EXPECT_EQ(report.files[0].leftOut, std::nullopt);
    EXPECT_EQ(report.files[1].path, "b.log");
    EXPECT_EQ(report.files[1].leftOut, LeftOutReason::ExcludedExtension);
}

TEST_F(RulesRun, SortsWarningsOfTheTextAndOfTheGameByTheirPlaces) {
    EXPECT_EQ(Warnings("include_paths = [\"b\", \"./a\", \"c\"]\nunknown = 1;"),
              (Lines{"3:19 The pattern 'b' matches nothing.",
                     "3:24 The pattern './a' has a directory '.' or an empty one in it, which the "
                     "paths in the catalogue then have as well.",
                     "3:31 The pattern 'c' matches nothing.",
                     "4:1 'unknown' is no key that the tool knows in 'search_options', so it is "
                     "ignored."}));
}

TEST_F(RulesRun, HasNoFilesWhereTheRulesAreRefused) {
    const RulesReport report = Report("");
    ASSERT_TRUE(report.refusal.has_value());
    EXPECT_EQ(report.refusal->code, ResultCode::InitFailedConfig);
    EXPECT_TRUE(report.files.empty());
    EXPECT_EQ(report.warnings.size(), 1U);
}

TEST_F(RulesRun, HasTheFilesWhereOneOfThemEndsGenerate) {
    const std::string deep = std::string(200, 'x') + "/" + std::string(55, 'y');
    game_.WriteFile(deep, "");
    const RulesReport report = Report(R"(include_paths = ["a", "x*"])");
    ASSERT_TRUE(report.refusal.has_value());
    EXPECT_EQ(report.refusal->code, ResultCode::CatalogueError);
    EXPECT_EQ(report.refusal->message, "Path too long for the catalogue: './" + deep + "'.");
    EXPECT_EQ(report.files.size(), 2U);
}

#if defined(__GLIBC__)
// Ends the process with 0 if a run in which no locale can be read warns of `expected` and nothing
// else. glibc asks for a locale once.
[[noreturn]] void EndWithoutLocales(const RulesRequest& request, const Lines& expected) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    const rlimit none{0, limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    static_cast<void>(KnowsLettersOfUnicode());
    setrlimit(RLIMIT_NOFILE, &limit);
    RulesReport report;
    EXPECT_EQ(RunRules(request, report), ResultCode::Ok);
    Lines messages;
    for (const RuleWarning& warning : report.warnings) {
        messages.push_back(warning.message);
    }
    EXPECT_EQ(messages, expected);
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

using RulesRunDeathTest = GameUnderRules;

TEST_F(RulesRunDeathTest, TellsOnceThatTheLettersOfNamesAreUnknown) {
    // A process of its own: this one may have read the locale already.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string text = ConfigOf(R"(exclude_paths = ["Quorvane"])");
    const RulesRequest request = {{"/game.cfg", text}, game_.Path(), "base"};
    const auto isGood = testing::ExitedWithCode(0);
    EXPECT_EXIT(EndWithoutLocales(request, {}), isGood, "") << "ASCII alone";
    game_.WriteFile("\u00c9cole", "1");
    game_.WriteFile("\u00e9cole", "1");
    const std::string unknown =
        "Letter case was compared in ASCII letters only: neither the locale 'C.UTF-8' nor 'en_US.UTF-8' can be read.";
    EXPECT_EXIT(EndWithoutLocales(request, {unknown}), isGood, "");
    game_.WriteFile("A", "1");
    const std::string ascii = "'A' and 'a' differ in letter case alone.";
    EXPECT_EXIT(EndWithoutLocales(request, (Lines{unknown, ascii})), isGood, "");
}
#endif

// The second run finds the outputs of the first.
class ForeseenSecondRun : public GameUnderRules {
  protected:
    static constexpr const char* kNothing = "matches nothing.";

    // Whether there is a warning that the pattern "out/Certificates/base.bin" matches nothing.
    [[nodiscard]] bool IsUnmatched() const {
        const Lines warnings = Warnings(R"(include_paths = ["a", "out/Certificates/base.bin"])");
        return std::any_of(warnings.begin(), warnings.end(),
                           [](const std::string& line) { return line.ends_with(kNothing); });
    }
};

TEST_F(GameUnderRules, TellsOfPatternsThatMatchNothingWhereThatIsTheReason) {
    const Lines warnings = Warnings(R"(include_paths = ["gone, too", "away"])");
    ASSERT_EQ(warnings.size(), 2U);
    EXPECT_TRUE(warnings[0].starts_with("3:19 The pattern 'gone, too' matches nothing."));
    EXPECT_TRUE(warnings[1].starts_with("3:32 The pattern 'away' matches nothing."));
}

TEST_F(ForeseenSecondRun, SealsTheOutputsOfTheFirst) {
    EXPECT_EQ(
        Warnings("exclude_paths = [ ]"),
        Lines{
            "3:17 A second run seals 'Quorvane/Certificates/base.bin' and "
            "'Quorvane/Certificates/base.cer' of the first one and then replaces them, so verify fails."});
}

TEST_F(ForeseenSecondRun, FollowsALinkInPlaceOfTheFolderOfTheOutputs) {
    fs::create_directory("out");
    EXPECT_TRUE(IsUnmatched()) << "before there is a link";
    fs::create_directory_symlink("out", "Quorvane");
    EXPECT_FALSE(IsUnmatched());
}

TEST_F(ForeseenSecondRun, SealsTheOutputsByAnotherWay) {
    fs::create_directory_symlink(".", "me");
    fs::create_directory_symlink("Quorvane", "old");
    const std::string here = "../" + fs::path(game_.Path()).filename().string();
    const std::vector<std::pair<std::string, std::string>> ways = {
        {"me", "me/Quorvane/Certificates"},
        {"me/Quorvane/*", "me/Quorvane/Certificates"},
        {"old", "old/Certificates"},
        {"old/*/base.*", "old/Certificates"},
        {here, here + "/Quorvane/Certificates"}};
    for (const auto& [pattern, folder] : ways) {
        const Lines warnings = Warnings(R"(include_paths = ["a", ")" + pattern + "\"]");
        const std::string expected =
            "3:24 A second run seals '" + folder + "/base.bin' and '" + folder +
            "/base.cer' of the first one and then replaces them, so verify fails.";
        EXPECT_EQ(std::count(warnings.begin(), warnings.end(), expected), 1) << pattern;
    }
}

TEST_F(ForeseenSecondRun, SealsNoOutputsThroughALinkBesideThem) {
    game_.WriteFile("d/b", "1");
    fs::create_directory_symlink("d", "link");
    EXPECT_EQ(Warnings(R"(include_paths = ["a", "link"])"), Lines{});
}

TEST_F(ForeseenSecondRun, SealsTheOutputsWhereALinkLeads) {
    fs::create_directory("out");
    fs::create_directory_symlink("out", "Quorvane");
    const std::string replaces =
        "A second run seals 'out/Certificates/base.bin' and 'out/Certificates/base.cer' of the first one and then replaces them, so verify fails.";
    EXPECT_EQ(Warnings(R"(include_paths = ["a", "out"])"), Lines{"3:24 " + replaces});
    EXPECT_EQ(Warnings("exclude_paths = [ ]").back(), "3:17 " + replaces);
}

TEST_F(ForeseenSecondRun, FollowsALinkInPlaceOfTheInnerFolder) {
    fs::create_directories("out/Certificates");
    fs::create_directory("Quorvane");
    EXPECT_TRUE(IsUnmatched()) << "before there is a link";
    fs::create_directory_symlink("../out/Certificates", "Quorvane/Certificates");
    EXPECT_FALSE(IsUnmatched());
}

TEST_F(ForeseenSecondRun, FailsWhereTheGameHasChangedSinceTheFirst) {
    const std::string text = ConfigOf(R"(include_paths = ["a"])");
    const PlannedOutputs outputs = PlanOutputs(game_.Path(), "base");
    SecondSelection second;
    EXPECT_EQ(SelectAgain({"/game.cfg", text}, game_.Path(), outputs, second), ResultCode::Ok);
    EXPECT_EQ(second.selection.matches.size(), 1U);
    game_.WriteFile("Quorvane", "");
    EXPECT_EQ(SelectAgain({"/game.cfg", text}, game_.Path(), outputs, second),
              ResultCode::SealkeeperIOError);
    EXPECT_EQ(LastLoggedError(), "The game has changed while it was looked at.");
}

}  // namespace
}  // namespace sealkeeper
