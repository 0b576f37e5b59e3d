#include "inspect/command_line/command_line.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "inspect/report/command_status.h"

namespace sealkeeper {
namespace {

constexpr int kRan = 7;
constexpr std::uint64_t kMost = 256;

std::string NoSpaces(const std::string& value) {
    return value.find(' ') == std::string::npos ? "" : "'" + value + "' has a space";
}

// A command with one option of each kind.
struct Sample {
    Sample() {
        Command command = commandLine.AddCommand("do", "Do it");
        command.AddOperand("WHAT", "What to do", operand);
        command.AddRequiredText({"--who", "NAME", "Who does it"}, who, NoSpaces);
        command.AddText({"--how", "MANNER", "How it is done"}, how);
        command.AddText({"--why", "REASON", "Why it is done"}, why, NoSpaces);
        command.AddChoice({"--when", "TIME", "When it is done"}, {"now", "later"}, when);
        command.AddNumber({"--times", "N", "How often"}, kMost, times);
        command.AddNumber({"--most", "N", "How often at the most"},
                          std::numeric_limits<std::uint64_t>::max(), most);
        command.AddFlag("--quiet", "Say nothing", isQuiet);
        command.AddFlag("--loud", "Say all", isLoud);
        command.Exclude("--quiet", "--loud");
        command.SetRun([] { return kRan; });
    }

    int Run(const std::vector<std::string>& arguments) {
        std::vector<const char*> argv = {"program"};
        for (const std::string& argument : arguments) {
            argv.push_back(argument.c_str());
        }
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int status = commandLine.Run(static_cast<int>(argv.size()), argv.data(), console);
        output = testing::internal::GetCapturedStdout();
        errors = testing::internal::GetCapturedStderr();
        return status;
    }

    Console console;
    CommandLine commandLine;
    std::string operand;
    std::string who;
    std::string how = "well";
    std::optional<std::string> why;
    std::string when = "now";
    std::uint64_t times = 1;
    std::optional<std::uint64_t> most;
    bool isQuiet = false;
    bool isLoud = false;
    std::string output;
    std::string errors;
};

TEST(CommandLine, GivesTheStatusOfTheCommandAndTheValuesOfItsOptions) {
    Sample sample;
    EXPECT_EQ(sample.Run({"do", "work", "--who", "me", "--why", "", "--when", "later", "--times",
                          "256", "--most", "18446744073709551615", "--quiet"}),
              kRan);
    EXPECT_EQ(sample.operand, "work");
    EXPECT_EQ(sample.who, "me");
    EXPECT_EQ(sample.how, "well");
    EXPECT_EQ(sample.why, "");
    EXPECT_EQ(sample.when, "later");
    EXPECT_EQ(sample.times, kMost);
    EXPECT_EQ(sample.most, std::numeric_limits<std::uint64_t>::max());
    EXPECT_TRUE(sample.isQuiet);
    EXPECT_FALSE(sample.isLoud);
    EXPECT_EQ(sample.errors, "");
}

TEST(CommandLine, LeavesWhatIsNotGivenAsItWas) {
    Sample sample;
    EXPECT_EQ(sample.Run({"do", "work", "--who", "me"}), kRan);
    EXPECT_EQ(sample.why, std::nullopt);
    EXPECT_EQ(sample.times, 1U);
    EXPECT_EQ(sample.most, std::nullopt);
}

TEST(CommandLine, SaysWhatIsWrong) {
    const struct {
        std::vector<std::string> arguments;
        std::string message;
    } cases[] = {
        {{}, "a command is required"},
        {{"--frob"}, "unknown option: --frob"},
        {{"do", "--frob"}, "unknown option: --frob"},
        {{"do", "--who", "me"}, "WHAT is required"},
        {{"do", "work"}, "--who is required"},
        {{"do", "work", "--who", "a b"}, "--who: 'a b' has a space"},
        {{"do", "work", "--who", "me", "--why", "a b"}, "--why: 'a b' has a space"},
        {{"do", "work", "--who", "me", "--times", "257"},
         "--times: '257' is not a whole number from 0 to 256"},
        {{"do", "work", "--who", "me", "--times", "-1"},
         "--times: '-1' is not a whole number from 0 to 256"},
        {{"do", "work", "--who", "me", "--times", "1x"},
         "--times: '1x' is not a whole number from 0 to 256"},
        {{"do", "work", "--who", "me", "--most", "18446744073709551616"},
         "--most: '18446744073709551616' is not a whole number from 0 to 18446744073709551615"},
        {{"do", "work", "--who", "me", "--when", "never"}, "--when: never not in {now,later}"},
        {{"do", "work", "--who", "me", "--quiet", "--loud"}, "--quiet excludes --loud"},
    };
    for (const auto& [arguments, message] : cases) {
        Sample sample;
        EXPECT_EQ(sample.Run(arguments), kUsageStatus) << message;
        EXPECT_EQ(sample.errors, "sealkeeper-inspect: " + message + " (see --help)\n");
        EXPECT_EQ(sample.output, "");
    }
}

TEST(CommandLine, AnswersCallsForHelp) {
    Sample sample;
    EXPECT_EQ(sample.Run({"do", "--help"}), kStatusGood);
    EXPECT_EQ(sample.errors, "");
    for (const char* const part : {"Do it", "WHAT REQUIRED", "--who NAME REQUIRED", "--how MANNER",
                                   "well", "--times N", "--most N  ", "How often"}) {
        EXPECT_NE(sample.output.find(part), std::string::npos) << part << "\n" << sample.output;
    }
}

}  // namespace
}  // namespace sealkeeper
