#include "app/verify_action.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::CapturedOutput;
using test::ReadFile;
using test::TempDirectory;

// The command line refuses directories that do not resolve, so the action is tested alone.
TEST(VerifyAction, DirectoryThatDoesNotResolve) {
    const TempDirectory directory;
    for (const std::string& path : {std::string(), directory / "missing/"}) {
        CommandLineOptions options;
        options.verifyDir = path;
        CapturedOutput output;
        EXPECT_EQ(RunVerifyAction(options), ResultCode::SealkeeperUsageError);
        EXPECT_EQ(output.Take(),
                  "[Err!] The provided working directory path couldn't be resolved, please make "
                  "sure it's a valid path: '" +
                      path + "'.\n" + ReadFile(SEALKEEPER_GOLDEN_DIR "/usage.txt"));
    }
}

TEST(VerifyAction, ResolvesTheDirectoryAgain) {
    const TempDirectory directory;
    directory.WriteFile("game/a", "");
    CommandLineOptions options;
    options.verifyDir = directory / "game/../game";
    CapturedOutput output;
    EXPECT_EQ(RunVerifyAction(options), ResultCode::SealkeeperIOError);
    EXPECT_EQ(output.Take(), "[Err!] The provided path: '" +
                                 (directory / "game/Quorvane/Certificates/") +
                                 "' does not match with existing directories.\n");
}

// Catalogues are opened by wide paths. A name that is not UTF-8 would become the error text, which
// must not serve as a path.
TEST(VerifyAction, DirectoryWhoseNameIsNoTextHasNoCatalogues) {
    const TempDirectory directory;
    std::error_code refused;
    fs::create_directories(directory / "g\xFF/Quorvane/Certificates", refused);
    if (refused) {
        GTEST_SKIP() << "the file system takes only UTF-8 names";
    }
    directory.WriteFile("g\xFF/Quorvane/Certificates/base.bin", "");
    CommandLineOptions options;
    options.verifyDir = directory / "g\xFF";
    CapturedOutput output;
    EXPECT_EQ(RunVerifyAction(options), ResultCode::SealkeeperIOError);
    EXPECT_EQ(output.Take(),
              "[Err!] The provided path: 'U82W_ERRORQuorvane/Certificates/' does not match with "
              "existing directories.\n");
}

}  // namespace
}  // namespace sealkeeper
