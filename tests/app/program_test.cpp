#include "app/program.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <string>
#include <vector>

#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ReadFile;
using test::TempDirectory;

constexpr const char* kBanner = "Anti-Cheat Sealkeeper v" SEALKEEPER_VERSION
                                " (for game developers only, must not be shipped to players)\n\n";
constexpr const char* kEchoed = "[Info] Provided command line arguments:\n";

TEST(Program, BannerNamesTheVersionAndEndsInAnEmptyLine) {
    CapturedOutput output;
    PrintBanner();
    const std::string banner = output.Take();
    EXPECT_TRUE(banner.starts_with("Anti-Cheat Sealkeeper v" SEALKEEPER_VERSION " (")) << banner;
    EXPECT_TRUE(banner.ends_with("\n\n")) << banner;
    EXPECT_EQ(banner.find('\n'), banner.size() - 2);
}

TEST(Program, EchoesEveryArgument) {
    const std::array<const char*, 3> argv = {"./sealkeeper", "-x", "C:\\Games"};
    CapturedOutput output;
    PrintArguments(3, argv.data());
    EXPECT_EQ(output.Take(),
              "[Info] Provided command line arguments:\n"
              "[Info]     arg[0]: ./sealkeeper\n"
              "[Info]     arg[1]: -x\n"
              "[Info]     arg[2]: C:/Games\n");
}

TEST(Program, WithoutAnActionDoesNothing) {
    CommandLineOptions options;
    CapturedOutput output;
    EXPECT_EQ(RunAction(options), ResultCode::Ok);
    EXPECT_EQ(output.Take(), "");
}

TEST(Program, ReportsAnUnknownActionAsInformation) {
    CommandLineOptions options;
    options.action = static_cast<ActionKind>(7);
    CapturedOutput output;
    EXPECT_EQ(RunAction(options), ResultCode::SealkeeperHashtoolGenericError);
    EXPECT_EQ(output.Take(), "[Info] Unrecognized action requested: 7.\n");
}

TEST(Program, RunsTheActionThatWasChosen) {
    const TempDirectory directory;
    const std::string missing = directory / "missing";
    CommandLineOptions options;
    options.targetGameDir = missing;
    options.listPath = missing;
    options.verifyDir = missing;
    const auto run = [&options](ActionKind action) {
        options.action = action;
        CapturedOutput output;
        const ResultCode code = RunAction(options);
        const std::string text = output.Take();
        return std::to_string(ResultCodeNumber(code)) + " " + text.substr(0, text.find('\n'));
    };
    EXPECT_EQ(run(ActionKind::Generate),
              "8 [Info] Generating signed integrity files for: '" + missing + "'.");
    EXPECT_EQ(run(ActionKind::List), "8 [Info] Performing list action on: '" + missing + "'.");
    EXPECT_EQ(run(ActionKind::Verify),
              "1 [Err!] The provided working directory path couldn't be resolved, please make sure "
              "it's a valid path: '" +
                  missing + "'.");
}

// Runs the program with default signal actions, and restores them afterwards.
struct ProgramRun {
    explicit ProgramRun(const std::vector<const char*>& arguments) {
        auto* const brokenPipes = std::signal(SIGPIPE, SIG_DFL);
        auto* const tooLargeFiles = std::signal(SIGXFSZ, SIG_DFL);
        CapturedOutput captured;
        status = RunProgram(static_cast<int>(arguments.size()), arguments.data());
        output = captured.Take();
        ignoresBrokenPipes = std::signal(SIGPIPE, brokenPipes) == SIG_IGN;
        ignoresTooLargeFiles = std::signal(SIGXFSZ, tooLargeFiles) == SIG_IGN;
    }

    int status = -1;
    std::string output;
    bool ignoresBrokenPipes = false;
    bool ignoresTooLargeFiles = false;
};

TEST(Program, WithoutArgumentsShowsTheUsage) {
    const ProgramRun run({"./sealkeeper"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, std::string(kBanner) + kEchoed + "[Info]     arg[0]: ./sealkeeper\n" +
                              ReadFile(SEALKEEPER_GOLDEN_DIR "/usage.txt"));
}

// POSIX allows a process without any arguments.
TEST(Program, WithoutEvenItsNameShowsTheUsage) {
    const ProgramRun run({});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output,
              std::string(kBanner) + kEchoed + ReadFile(SEALKEEPER_GOLDEN_DIR "/usage.txt"));
    EXPECT_EQ(GetCommandLineOptions().programPath, "");
}

TEST(Program, VersionIsTheBanner) {
    const ProgramRun run({"sealkeeper", "--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, std::string(kBanner) + kEchoed +
                              "[Info]     arg[0]: sealkeeper\n[Info]     arg[1]: --version\n");
}

TEST(Program, FailsToWriteInsteadOfBeingEnded) {
    const ProgramRun run({"sealkeeper", "--version"});
    EXPECT_TRUE(run.ignoresBrokenPipes);
    EXPECT_TRUE(run.ignoresTooLargeFiles);
}

TEST(Program, OutOfMemoryIsAMessageAndAStatus) {
    CapturedOutput output;
    EXPECT_EQ(ReportOutOfMemory(), 2);
    EXPECT_EQ(output.Take(), "[Err!] Out of memory.\n");
}

TEST(Program, TheOptionsRecordIsOne) {
    EXPECT_EQ(&GetCommandLineOptions(), &GetCommandLineOptions());
}

}  // namespace
}  // namespace sealkeeper
