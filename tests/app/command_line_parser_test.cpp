#include "app/command_line_parser.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fault/fault_injection.h"
#include "platform/processors.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::ScopedLogThreshold;
using test::TempDirectory;

std::string Usage() {
    return ReadFile(SEALKEEPER_GOLDEN_DIR "/usage.txt");
}

struct Parsed {
    CommandLineOptions options;
    ResultCode code = ResultCode::Ok;
    std::string output;
};

std::unique_ptr<Parsed> Parse(const std::vector<std::string>& arguments) {
    const ScopedLogThreshold keepsThreshold(g_logThreshold);
    auto parsed = std::make_unique<Parsed>();
    std::vector<const char*> argv = {"/opt/sealkeeper"};
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    CapturedOutput output;
    parsed->code = ParseCommandLine(parsed->options, static_cast<int>(argv.size()), argv.data());
    parsed->output = output.Take();
    return parsed;
}

void ExpectFailure(const std::vector<std::string>& arguments, const std::string& output) {
    const auto parsed = Parse(arguments);
    EXPECT_EQ(parsed->code, ResultCode::SealkeeperUsageError);
    EXPECT_EQ(parsed->output, output);
}

constexpr const char* kProductX = "[Info] Parsed Nimbrel product id: 'X'.\n";
constexpr const char* kDirectoryD = "[Info] Parsed target game directory: 'D'.\n";

TEST(CommandLineParser, HasItsDefaults) {
    const CommandLineOptions options;
    EXPECT_EQ(options.action, ActionKind::None);
    EXPECT_EQ(options.privateKeyFile, "base_private.key");
    EXPECT_EQ(options.certificateFile, "base_public.cer");
    EXPECT_EQ(options.configFile, "anticheat_sealkeeper.cfg");
    EXPECT_FALSE(options.gameDevMode);
    EXPECT_EQ(options.outputName, "base");
    EXPECT_EQ(options.crlFile + options.targetFile + options.targetGameDir + options.listPath +
                  options.verifyDir + options.productId,
              "");
}

TEST(CommandLineParser, WithoutOptionsPrintsUsageAlone) {
    ExpectFailure({}, Usage());
    ExpectFailure({"my.cfg"}, Usage());
    ExpectFailure({"my.cfg", "other.cfg"}, Usage());
}

TEST(CommandLineParser, StoresAndReportsEveryOption) {
    const auto parsed =
        Parse({"-incert", "c", "-incrl", "r", "-inkey", "k", "-outname", "o", "-productid", "X",
               "-target_game_dir", "D", "-gamedev", "-v", "-target_file", "f"});
    EXPECT_EQ(parsed->code, ResultCode::Ok);
    EXPECT_EQ(parsed->output,
              "[Info] Parsed certificate filename: 'c'.\n"
              "[Info] Parsed certificate revocation list: 'r'.\n"
              "[Info] Parsed private key filename: 'k'.\n"
              "[Info] Parsed output catalogue filename: 'o'.\n"
              "[Info] Parsed Nimbrel product id: 'X'.\n"
              "[Info] Parsed target game directory: 'D'.\n"
              "[Info] Parsed target filename: 'f'.\n");
    const CommandLineOptions& options = parsed->options;
    EXPECT_EQ(options.certificateFile, "c");
    EXPECT_EQ(options.crlFile, "r");
    EXPECT_EQ(options.privateKeyFile, "k");
    EXPECT_EQ(options.outputName, "o");
    EXPECT_EQ(options.productId, "X");
    EXPECT_EQ(options.targetGameDir, "D");
    EXPECT_EQ(options.targetFile, "f");
    EXPECT_TRUE(options.gameDevMode);
    EXPECT_EQ(options.action, ActionKind::Generate);
    EXPECT_EQ(options.programPath, "/opt/sealkeeper");
}

TEST(CommandLineParser, VerboseRaisesTheThreshold) {
    const ScopedLogThreshold restore(LogLevel::Info);
    const std::vector<const char*> argv = {"p", "-v"};
    CommandLineOptions options;
    CapturedOutput output;
    EXPECT_EQ(ParseCommandLine(options, 2, argv.data()), ResultCode::SealkeeperUsageError);
    EXPECT_EQ(g_logThreshold, LogLevel::Verbose);
}

TEST(CommandLineParser, LastValueWins) {
    const auto parsed = Parse({"-productid", "A", "-productid=B", "-target_game_dir", "D"});
    EXPECT_EQ(parsed->options.productId, "B");
}

std::size_t JobsAfter(const std::vector<std::string>& jobs) {
    std::vector<std::string> arguments = {"-productid=X", "-target_game_dir=D"};
    arguments.insert(arguments.end(), jobs.begin(), jobs.end());
    const auto parsed = Parse(arguments);
    EXPECT_EQ(parsed->code, ResultCode::Ok);
    EXPECT_EQ(parsed->output, std::string(kProductX) + kDirectoryD);
    return parsed->options.jobs;
}

TEST(CommandLineParser, JobsAreANumberOfThreads) {
    EXPECT_EQ(JobsAfter({}), 1U);
    EXPECT_EQ(JobsAfter({"-jobs", "3"}), 3U);
    EXPECT_EQ(JobsAfter({"-jobs=1"}), 1U);
    EXPECT_EQ(JobsAfter({"-j=256"}), 256U);
    EXPECT_EQ(JobsAfter({"-jobs=007"}), 7U);
    EXPECT_EQ(JobsAfter({"-jobs=4", "-jobs", "2"}), 2U);
}

TEST(CommandLineParser, NoJobsAreOneForEachProcessor) {
    EXPECT_EQ(JobsAfter({"-jobs", "0"}), std::min<std::size_t>(CountProcessors(), 256));
#ifdef CPU_COUNT
    using Reach = test::ScopedFault::Reach;
    for (const auto& [processors, jobs] : {std::pair{3, 3U}, std::pair{300, 256U}}) {
        const test::ScopedFault told(test::Call::Affinity, 0, Reach::Onwards, processors);
        EXPECT_EQ(JobsAfter({"-jobs", "0"}), jobs);
    }
#endif
}

TEST(CommandLineParser, FaultyJobsPrintUsageAlone) {
    for (const char* value :
         {"", "257", "1000", "18446744073709551616", "x", "4x", "4 ", " 4", "+4", "-4", "0x4"}) {
        SCOPED_TRACE(value);
        ExpectFailure({"-jobs=" + std::string(value)}, Usage());
    }
    ExpectFailure({"-jobs"}, Usage());
    ExpectFailure({"-jobs", "-4"}, Usage());
}

TEST(CommandLineParser, AttachedValueMayBeginWithADash) {
    EXPECT_EQ(Parse({"-productid=-X", "-target_game_dir", "D"})->options.productId, "-X");
}

TEST(CommandLineParser, EmptyValuesAreStored) {
    const auto parsed =
        Parse({"-outname=", "-inkey", "", "-productid", "X", "-target_game_dir", "D"});
    EXPECT_EQ(parsed->code, ResultCode::Ok);
    EXPECT_EQ(parsed->options.outputName, "");
    EXPECT_EQ(parsed->options.privateKeyFile, "");
}

TEST(CommandLineParser, FaultyArgumentsPrintUsageAlone) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"-nonsense"},
                                               {"-config_file", "x.cfg"},
                                               {"-in", "x"},
                                               {""},
                                               {"-inkey"},
                                               {"-inkey", "-v"},
                                               {"-v=1"},
                                               {"-gamedev=1"},
                                               {"--help=1"},
                                               {"--version=1"},
                                               {"list"},
                                               {"verify", "-v"},
                                               {"-nonsense", "--help"},
                                               {"-productid X"}}) {
        SCOPED_TRACE(arguments.front());
        ExpectFailure(arguments, Usage());
    }
}

TEST(CommandLineParser, StopsAtTheFirstFault) {
    ExpectFailure({"-productid", "X", "-nonsense", "-target_game_dir", "D"}, kProductX + Usage());
}

TEST(CommandLineParser, HelpPrintsUsageAndHelpAndStops) {
    for (const char* option : {"--help", "-?", "--h"}) {
        const auto parsed = Parse({"-productid", "X", option, "-nonsense"});
        EXPECT_EQ(parsed->code, ResultCode::Ok);
        EXPECT_EQ(parsed->options.action, ActionKind::None);
        EXPECT_EQ(parsed->output,
                  kProductX + Usage() + ReadFile(SEALKEEPER_GOLDEN_DIR "/help.txt"));
    }
}

TEST(CommandLineParser, VersionPrintsNothingAndStops) {
    const auto parsed = Parse({"--version", "-nonsense"});
    EXPECT_EQ(parsed->code, ResultCode::Ok);
    EXPECT_EQ(parsed->options.action, ActionKind::None);
    EXPECT_EQ(parsed->output, "");
}

TEST(CommandLineParser, ProductIdIsRequiredWithoutUsage) {
    ExpectFailure({"-target_game_dir", "D"},
                  std::string(kDirectoryD) + "[Err!] ProductId argument must be specified.\n");
    ExpectFailure({"-v"}, "[Err!] ProductId argument must be specified.\n");
    ExpectFailure({"verify", "."}, "[Err!] ProductId argument must be specified.\n");
}

TEST(CommandLineParser, GenerateRequiresTheGameDirectory) {
    ExpectFailure({"-productid", "X"},
                  kProductX +
                      std::string("[Err!] target_game_dir argument must be specified as either "
                                  "absolute or relative path for the signed files generation.\n") +
                      Usage());
}

TEST(CommandLineParser, TakesOneConfigurationFileAnywhere) {
    const auto parsed = Parse({"-productid", "X", "my.cfg", "-target_game_dir", "D"});
    EXPECT_EQ(parsed->code, ResultCode::Ok);
    EXPECT_EQ(parsed->options.action, ActionKind::Generate);
    EXPECT_EQ(parsed->options.configFile, "my.cfg");
}

TEST(CommandLineParser, TwoConfigurationFilesPrintUsage) {
    ExpectFailure({"-productid", "X", "-target_game_dir", "D", "a.cfg", "b.cfg"},
                  kProductX + std::string(kDirectoryD) + Usage());
}

TEST(CommandLineParser, TwoConfigurationFilesWithATargetFilePrintUsageAlone) {
    ExpectFailure(
        {"-productid=X", "-target_game_dir=D", "-target_file=f", "a.cfg", "b.cfg"},
        kProductX + std::string(kDirectoryD) + "[Info] Parsed target filename: 'f'.\n" + Usage());
}

TEST(CommandLineParser, TargetFileExcludesAConfigurationFile) {
    ExpectFailure({"-productid", "X", "-target_game_dir", "D", "-target_file", "f", "a.cfg"},
                  kProductX + std::string(kDirectoryD) +
                      "[Info] Parsed target filename: 'f'.\n"
                      "[Err!] target_file and config_file arguments cannot be used together.\n" +
                      Usage());
}

TEST(CommandLineParser, VerifyAndListExcludeEachOther) {
    ExpectFailure({"-productid", "X", "verify", "D", "list", "F"},
                  kProductX +
                      std::string("[Err!] Verify and List arguments cannot be used together.\n") +
                      Usage());
}

TEST(CommandLineParser, ListNeedsNoProductIdAndIgnoresPositionals) {
    const TempDirectory directory;
    const std::string file = directory.WriteFile("base.bin", "");
    const ScopedCurrentDirectory inside(directory.Path());
    const auto parsed = Parse({"a.cfg", "li", "./base.bin", "b.cfg"});
    EXPECT_EQ(parsed->code, ResultCode::Ok);
    EXPECT_EQ(parsed->output, "");
    EXPECT_EQ(parsed->options.action, ActionKind::List);
    EXPECT_EQ(parsed->options.listPath, file);
}

TEST(CommandLineParser, ListOfAMissingFileFails) {
    ExpectFailure({"list", "no/such\\file"},
                  "[Err!] The provided working directory path couldn't be resolved, please make "
                  "sure it's a valid path: 'no/such/file'.\n" +
                      Usage());
}

TEST(CommandLineParser, VerifyResolvesItsDirectoryWithASeparator) {
    const TempDirectory directory;
    const ScopedCurrentDirectory inside(directory.Path());
    const auto parsed = Parse({"-productid", "X", "ver", ".", "ignored.cfg"});
    EXPECT_EQ(parsed->code, ResultCode::Ok);
    EXPECT_EQ(parsed->options.action, ActionKind::Verify);
    EXPECT_EQ(parsed->options.verifyDir, directory.Path() + "/");
    EXPECT_EQ(Parse({"-productid", "X", "verify", "/"})->options.verifyDir, "/");
}

TEST(CommandLineParser, VerifyOfAMissingDirectoryFails) {
    ExpectFailure({"-productid", "X", "verify", "no/such"},
                  kProductX +
                      std::string("[Err!] The provided working directory path couldn't be "
                                  "resolved, please make sure it's a valid path: 'no/such'.\n") +
                      Usage());
}

TEST(CommandLineParser, EmptyListAndVerifyCountAsNotGiven) {
    ExpectFailure({"list", ""}, "[Err!] ProductId argument must be specified.\n");
    const auto parsed = Parse({"verify", "", "-productid", "X", "-target_game_dir", "D"});
    EXPECT_EQ(parsed->options.action, ActionKind::Generate);
}

TEST(CommandLineParser, TakesMoreThanFiftyArguments) {
    std::vector<std::string> arguments(200, "-gamedev");
    arguments.insert(arguments.end(), {"-productid", "X", "-target_game_dir", "D", "my.cfg"});
    const auto parsed = Parse(arguments);
    EXPECT_EQ(parsed->code, ResultCode::Ok);
    EXPECT_EQ(parsed->options.configFile, "my.cfg");
}

}  // namespace
}  // namespace sealkeeper
