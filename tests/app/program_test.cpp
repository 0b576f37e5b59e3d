#include "app/program.h"

#include <gtest/gtest.h>

#include <array>

#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

TEST(Program, BannerNamesTheVersionAndEndsInAnEmptyLine) {
    CapturedOutput output;
    PrintBanner();
    const std::string banner = output.Take();
    EXPECT_TRUE(banner.starts_with("Anti-Cheat Sealkeeper v2.2.0")) << banner;
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

TEST(Program, TheOptionsRecordIsOne) {
    EXPECT_EQ(&GetCommandLineOptions(), &GetCommandLineOptions());
}

}  // namespace
}  // namespace sealkeeper
