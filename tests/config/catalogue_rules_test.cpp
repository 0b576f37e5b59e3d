#include "config/catalogue_rules.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "config/file_collector.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::TempDirectory;

constexpr const char* kAboveMaximum =
    "[Warn] exclude_size_threshold exceeds the recommended maximum value of 1024 MB, this is very likely to cause issues for end-users!\n";
constexpr const char* kBelowMinimum =
    "[Warn] exclude_size_threshold is below the recommended minimum value of 10 MB, this is very likely to cause issues for end-users!\n";
constexpr const char* kBothLists =
    "[Err!] Both include_paths and exclude_paths are specified, only one is allowed.\n";
constexpr const char* kNeitherList =
    "[Err!] Either include_paths or exclude_paths must be specified.\n";
constexpr const char* kAliasList =
    "[Err!] alias_paths is invalid. It must be in a list & array format( [\"orig1\",\"repl1\"], [\"orig2\",\"repl2\"] ); ... ).\n";
constexpr const char* kIgnoreFlag = "[Warn] ignore_files_without_extension flag has been set.\n";
// Deliberately without a line feed.
constexpr const char* kWorkingDirectory =
    "[Err!] working_directory found in the .cfg file, please update the file and provide this through arguments instead.";
constexpr const char* kAliasLeaves =
    "[Err!] alias_paths is invalid. '..' and ':' are not allowed.All paths are relative to working_directory.\n";

struct Outcome {
    ResultCode code = ResultCode::Aborted;
    std::string output;
    CatalogueConfig config;
};

// Reads a section "search_options" that holds `entries`.
Outcome ReadRules(const std::string& entries) {
    ConfigDocument document;
    EXPECT_TRUE(document.ParseConfigText("search_options {" + entries + "\n}\n"));
    std::string name = "search_options";
    Outcome outcome;
    CapturedOutput output;
    outcome.code = ReadCatalogueRules(document.GetSection(name), outcome.config);
    outcome.output = output.Take();
    return outcome;
}

struct RulesCase {
    const char* name;
    std::string entries;
    ResultCode code;
    std::string output;
};

void ExpectRules(const std::vector<RulesCase>& cases) {
    for (const RulesCase& rules : cases) {
        const Outcome outcome = ReadRules(rules.entries);
        EXPECT_EQ(outcome.code, rules.code) << rules.name;
        EXPECT_EQ(outcome.output, rules.output) << rules.name;
    }
}

constexpr ResultCode kOk = ResultCode::Ok;
constexpr ResultCode kFailed = ResultCode::InitFailedConfig;

TEST(CatalogueRules, PathLists) {
    ExpectRules({
        {"include", "include_paths=[\"a\"]", kOk, ""},
        {"exclude", "exclude_paths=[\"a\"]", kOk, ""},
        {"upper case", "EXCLUDE_Paths=[\"a\"]", kOk, ""},
        {"both", "include_paths=[\"a\"] exclude_paths=[\"b\"]", kFailed, kBothLists},
        {"both, one of them empty", "include_paths=[\"a\"] exclude_paths=[ ]", kFailed, kBothLists},
        {"both empty", "include_paths=[ ] exclude_paths=[ ]", kFailed, kBothLists},
        {"neither", "exclude_size_threshold=100;", kFailed, kNeitherList},
        {"include as a string", "include_paths=\"a\"", kFailed, kNeitherList},
        {"exclude as pairs", "exclude_paths=(\"a\",\"b\")", kFailed, kNeitherList},
        {"exclude as a number", "exclude_paths=1;", kFailed, kNeitherList},
        {"include as a string beside exclude", "include_paths=\"a\" exclude_paths=[\"b\"]", kOk,
         ""},
    });
}

TEST(CatalogueRules, AMissingSectionLacksTheLists) {
    ConfigDocument document;
    std::string name = "search_options";
    CatalogueConfig config;
    CapturedOutput output;
    EXPECT_EQ(ReadCatalogueRules(document.GetSection(name), config), kFailed);
    EXPECT_EQ(output.Take(), kNeitherList);
}

TEST(CatalogueRules, SizeThresholdWarnings) {
    const std::vector<std::pair<std::string, std::string>> thresholds = {
        {"1024", ""},
        {"10", ""},
        {"11", ""},
        {"1023", ""},
        {"1025", kAboveMaximum},
        {"9", kBelowMinimum},
        {"0", kBelowMinimum},
        {"2147483647", kAboveMaximum},
        {"3000000000", kAboveMaximum},
        {"4294967295", kAboveMaximum},
        {"4294967296", kBelowMinimum}};
    for (const auto& [threshold, output] : thresholds) {
        const Outcome outcome =
            ReadRules("include_paths=[\"a\"] exclude_size_threshold=" + threshold + ";");
        EXPECT_EQ(outcome.code, kOk) << threshold;
        EXPECT_EQ(outcome.output, output) << threshold;
    }
}

TEST(CatalogueRules, SizeThresholdInDecimalMegabytes) {
    const std::vector<std::pair<std::string, std::uint64_t>> thresholds = {
        {"exclude_size_threshold=0;", 0},
        {"exclude_size_threshold=1;", 1'000'000},
        {"exclude_size_threshold=1024;", 1'024'000'000},
        {"exclude_size_threshold=2147483647;", 2'147'483'647'000'000},
        {"exclude_size_threshold=3000000000;",
         static_cast<std::uint64_t>(std::int64_t{-1'294'967'296'000'000})},
        {"", 1'024'000'000},
        {"exclude_size_threshold=\"5\"", 1'024'000'000},
        {"exclude_size_threshold=true", 1'024'000'000},
    };
    for (const auto& [entry, sizeBytes] : thresholds) {
        EXPECT_EQ(ReadRules("include_paths=[\"a\"] " + entry).config.sizeThresholdBytes, sizeBytes)
            << entry;
    }
}

TEST(CatalogueRules, AliasKind) {
    ExpectRules({
        {"pairs", "include_paths=[\"a\"] alias_paths=([\"a\",\"b\"])", kOk, ""},
        {"list", "include_paths=[\"a\"] alias_paths=[\"a\",\"b\"]", kFailed, kAliasList},
        {"empty list", "include_paths=[\"a\"] alias_paths=[ ]", kFailed, kAliasList},
        {"list beside pairs", "include_paths=[\"a\"] alias_paths=(\"a\",\"b\") alias_paths=[\"a\"]",
         kFailed, kAliasList},
        {"string", "include_paths=[\"a\"] alias_paths=\"a:b\"", kOk, ""},
    });
}

TEST(CatalogueRules, AliasesThatLeaveTheGameDirectory) {
    for (const char* pair : {"\"..\",\"b\"", "\"a/..\",\"b\"", "\"a\",\"../b\"", "\"a..b\",\"c\"",
                             "\"C:\",\"b\"", "\"a\",\"C:\\\\b\"", "\"a\",\":\"", "\"...\",\"b\""}) {
        const Outcome outcome =
            ReadRules("include_paths=[\"a\"] alias_paths=(" + std::string(pair) + ")");
        EXPECT_EQ(outcome.code, kFailed) << pair;
        EXPECT_EQ(outcome.output, kAliasLeaves) << pair;
    }
    EXPECT_EQ(ReadRules("include_paths=[\"a\"] alias_paths=(\"./a.b\",\".\")").code, kOk);
}

TEST(CatalogueRules, PairsBeforeABadAliasAreStored) {
    const Outcome outcome = ReadRules(
        "include_paths=[\"a\"] ignore_files_without_extension=true "
        "alias_paths=(\"z\",\"1\",\"m\",\":\",\"a\",\"2\")");
    EXPECT_EQ(outcome.code, kFailed);
    EXPECT_EQ(outcome.output, std::string(kIgnoreFlag) + kAliasLeaves);
    EXPECT_EQ(outcome.config.pathAliases, (std::map<std::string, std::string>{{"a", "2"}}));
    EXPECT_FALSE(outcome.config.skipFilesWithoutExtension);
}

TEST(CatalogueRules, AliasesHaveForwardSlashes) {
    const Outcome outcome = ReadRules(
        "include_paths=[\"a\"] alias_paths=(\"a\\b\",\"late\",\"a/b\",\"c\\\\d\\\",\"x\",\"\\e\")");
    EXPECT_EQ(outcome.code, kOk);
    // Pairs are sorted by the bytes of their names, where '/' comes before the backslash.
    EXPECT_EQ(outcome.config.pathAliases,
              (std::map<std::string, std::string>{{"a/b", "c/d/"}, {"x", "/e"}}));
}

TEST(CatalogueRules, IgnoreFilesWithoutExtension) {
    ExpectRules({
        {"true", "include_paths=[\"a\"] ignore_files_without_extension=true", kOk, kIgnoreFlag},
        {"number one", "include_paths=[\"a\"] ignore_files_without_extension=1;", kOk, kIgnoreFlag},
        {"false", "include_paths=[\"a\"] ignore_files_without_extension=false", kOk, ""},
        {"number zero", "include_paths=[\"a\"] ignore_files_without_extension=0;", kOk, ""},
        {"string", "include_paths=[\"a\"] ignore_files_without_extension=\"true\"", kOk, ""},
    });
    const std::string key = "include_paths=[\"a\"] ignore_files_without_extension=";
    EXPECT_TRUE(ReadRules(key + "true").config.skipFilesWithoutExtension);
    EXPECT_TRUE(ReadRules(key + "1;").config.skipFilesWithoutExtension);
    EXPECT_FALSE(ReadRules(key + "false").config.skipFilesWithoutExtension);
    EXPECT_FALSE(ReadRules(key + "0;").config.skipFilesWithoutExtension);
    EXPECT_FALSE(ReadRules(key + "\"true\"").config.skipFilesWithoutExtension);
}

TEST(CatalogueRules, WorkingDirectory) {
    ExpectRules({
        {"string", "include_paths=[\"a\"] working_directory=\"/x\"", kFailed, kWorkingDirectory},
        {"empty string", "include_paths=[\"a\"] working_directory=\"\"", kFailed,
         kWorkingDirectory},
        {"number", "include_paths=[\"a\"] working_directory=1;", kOk, ""},
        {"list", "include_paths=[\"a\"] working_directory=[\"/x\"]", kOk, ""},
    });
}

TEST(CatalogueRules, OrderOfTheMessages) {
    const std::string threshold = "exclude_size_threshold=5; ";
    const std::string flag = "ignore_files_without_extension=true ";
    const std::string directory = "working_directory=\"/x\" ";
    const std::string include = "include_paths=[\"a\"] ";
    const std::string badPair = "alias_paths=(\":\",\"a\") ";
    const std::string aliasList = "alias_paths=[\"a\"] ";
    const std::string below = kBelowMinimum;
    ExpectRules({
        {"threshold, then both lists",
         flag + directory + badPair + aliasList + include + "exclude_paths=[\"a\"] " + threshold,
         kFailed, below + kBothLists},
        {"threshold, then neither list", flag + directory + badPair + aliasList + threshold,
         kFailed, below + kNeitherList},
        {"threshold, then alias list", flag + directory + badPair + aliasList + include + threshold,
         kFailed, below + kAliasList},
        {"flag, then working directory", badPair + directory + include + threshold + flag, kFailed,
         below + kIgnoreFlag + kWorkingDirectory},
        {"flag, then alias", badPair + include + threshold + flag, kFailed,
         below + kIgnoreFlag + kAliasLeaves},
    });
}

TEST(CatalogueRules, Defaults) {
    const CatalogueConfig config = ReadRules("include_paths=[\"a\"]").config;
    EXPECT_EQ(config.sizeThresholdBytes, 1'024'000'000U);
    EXPECT_TRUE(config.excludePaths.empty());
    EXPECT_TRUE(config.excludedExtensions.empty());
    EXPECT_TRUE(config.pathAliases.empty());
    EXPECT_FALSE(config.skipFilesWithoutExtension);
}

TEST(CatalogueRules, FillsOneListInFileOrder) {
    const CatalogueConfig included = ReadRules("include_paths=[\"b\",\"a\",\"b\"]").config;
    EXPECT_EQ(included.includePaths, (std::vector<std::string>{"b", "a", "b"}));
    EXPECT_TRUE(included.excludePaths.empty());
    const CatalogueConfig excluded = ReadRules("exclude_paths=[\"b\",\"a\"]").config;
    EXPECT_EQ(excluded.excludePaths, (std::vector<std::string>{"b", "a"}));
    EXPECT_TRUE(excluded.includePaths.empty());
}

TEST(CatalogueRules, ExtensionsAsWritten) {
    const CatalogueConfig config =
        ReadRules("include_paths=[\"a\"] exclude_extensions=[\".PDB\",\"log\",\".PDB\",\".\\\\\"]")
            .config;
    EXPECT_EQ(config.excludedExtensions, (std::unordered_set<std::string>{".PDB", "log", ".\\"}));
}

struct VersionCase {
    const char* name;
    std::string text;
    ResultCode code;
    std::string output;
};

TEST(CatalogueRules, ConfigVersion) {
    const TempDirectory directory;
    const std::string path = directory / "a.cfg";
    const std::string unreadable =
        "[Err!] Could not load or parse the configuration file: '" + path + "'.\n";
    const std::vector<VersionCase> cases = {
        {"2", "Config_Info { Version = 2; }", kOk, "[Info] Using config version: 2.\n"},
        {"wraps to 2", "config_info {version=4294967298;}", kOk,
         "[Info] Using config version: 2.\n"},
        {"1", "config_info {version=1;}", kFailed, "[Err!] Unsupported config file version: 1.\n"},
        {"0", "config_info {version=0;}", kFailed, "[Err!] Unsupported config file version: 0.\n"},
        {"3", "config_info {version=3;}", kFailed, "[Err!] Unsupported config file version: 3.\n"},
        {"negative", "config_info {version=4294967295;}", kFailed,
         "[Err!] Unsupported config file version: 18446744073709551615.\n"},
        {"no section", "search_options {version=2;}", kFailed,
         "[Err!] Unsupported config file version: 1.\n"},
        {"no version", "config_info {x=2;}", kFailed,
         "[Err!] Unsupported config file version: 1.\n"},
        {"string", "config_info {version=\"2\" }", kFailed,
         "[Err!] Unsupported config file version: 1.\n"},
        {"no semicolon", "config_info {version=2 }", kFailed,
         "[Err!] Unsupported config file version: 1.\n"},
        {"one byte", "x", kFailed, "[Err!] Unsupported config file version: 1.\n"},
        {"empty", "", kFailed, unreadable},
        {"line feed in a list", "config_info {version=2; x=[\"\n\"] }", kFailed, unreadable},
    };
    for (const VersionCase& version : cases) {
        directory.WriteFile("a.cfg", version.text);
        ConfigDocument document;
        CapturedOutput output;
        EXPECT_EQ(CheckConfigVersion(path, document), version.code) << version.name;
        EXPECT_EQ(output.Take(), version.output) << version.name;
        ConfigDocument ofText;
        EXPECT_EQ(CheckConfigText(path, version.text, ofText), version.code) << version.name;
        EXPECT_EQ(output.Take(), version.output) << version.name << ", as text";
    }
}

TEST(CatalogueRules, ConfigFileThatCannotBeLoaded) {
    const TempDirectory directory;
    for (const std::string& path : {std::string(), directory / "missing.cfg", directory.Path()}) {
        ConfigDocument document;
        CapturedOutput output;
        EXPECT_EQ(CheckConfigVersion(path, document), kFailed) << path;
        EXPECT_EQ(output.Take(),
                  "[Err!] Could not load or parse the configuration file: '" + path + "'.\n");
    }
}

TEST(CatalogueRules, TheCollectorTakesThem) {
    ConfigDocument document;
    ASSERT_TRUE(document.ParseConfigText("s {exclude_paths=[\"a\"] exclude_size_threshold=20;}"));
    std::string name = "s";
    FileCollector collector("/game/");
    EXPECT_EQ(collector.ApplyCatalogueRules(document.GetSection(name)), kOk);
    EXPECT_EQ(collector.Config().sizeThresholdBytes, 20'000'000U);
    EXPECT_EQ(collector.Config().excludePaths, std::vector<std::string>{"a"});
}

}  // namespace
}  // namespace sealkeeper
