#include "app/game_verification.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>

#include "app/console_log.h"
#include "app/sealed_game.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::TempDirectory;

class GameVerificationTest : public testing::Test {
  protected:
    GameVerificationTest() { sealed_.VerifyBy(options_); }

    // One line per verdict.
    static std::string VerifyFiles(GameVerification& game) {
        std::string lines;
        while (game.HasNextFile()) {
            FileVerdict verdict;
            EXPECT_EQ(game.VerifyNextFile(verdict), ResultCode::Ok);
            lines += game.Catalogues()[verdict.catalogueIndex].nameUtf8 + " " + verdict.pathUtf8 +
                     " " + std::to_string(verdict.entry->FileSizeBytes()) + " " +
                     ResultCodeText(verdict.code) + "\n";
        }
        return lines;
    }

    test::SealedGame sealed_;
    const TempDirectory& game_ = sealed_.Directory();
    CommandLineOptions options_;
    CapturedOutput output_;
};

TEST_F(GameVerificationTest, GivesEachVerdictWithItsCatalogue) {
    game_.WriteFile("b/c", "content of b/d");
    GameVerification game(options_);
    ASSERT_EQ(game.FindCatalogues(), ResultCode::Ok);
    ASSERT_EQ(game.ReadCatalogues(), ResultCode::Ok);
    ASSERT_EQ(game.Catalogues().size(), 2U);
    EXPECT_EQ(game.Catalogues()[0].entriesSoFar, 2U);
    EXPECT_EQ(game.Catalogues()[1].entriesSoFar, 3U);
    EXPECT_EQ(game.Entries().size(), 3U);
    EXPECT_EQ(VerifyFiles(game),
              "base.bin a 12 Ok\n"
              "base.bin b/c 14 FileVerificationHashMismatch\n"
              "mod.bin m 12 Ok\n");
    EXPECT_EQ(game.Result(), ResultCode::FileVerificationHashMismatch);
}

TEST_F(GameVerificationTest, TellsWhyTheDirectoryDoesNotResolve) {
    options_.verifyDir = game_ / "a/b";
    // What is logged in between changes errno.
    SendLogTo([](LogLevel, std::string_view) { errno = 0; });
    GameVerification game(options_);
    EXPECT_EQ(game.FindCatalogues(), ResultCode::SealkeeperUsageError);
    SendLogTo(nullptr);
    EXPECT_EQ(game.DirectoryError(), ENOTDIR);
}

TEST_F(GameVerificationTest, TellsOfNoDirectoryErrorWhereThereAreNoCatalogues) {
    std::filesystem::remove_all("Quorvane");
    GameVerification game(options_);
    EXPECT_EQ(game.FindCatalogues(), ResultCode::SealkeeperIOError);
    EXPECT_EQ(game.DirectoryError(), 0);
}

TEST_F(GameVerificationTest, TellsOfANameThatIsNoUtf8) {
    std::filesystem::rename("Quorvane/Certificates/mod.bin", "Quorvane/Certificates/m\xFF.bin");
    GameVerification game(options_);
    ASSERT_EQ(game.FindCatalogues(), ResultCode::Ok);
    EXPECT_EQ(game.ReadCatalogues(), ResultCode::CatalogueError);
    ASSERT_EQ(game.Catalogues().size(), 2U);
    EXPECT_TRUE(game.Catalogues()[0].isNameUtf8);
    EXPECT_FALSE(game.Catalogues()[1].isNameUtf8);
}

TEST_F(GameVerificationTest, TellsWhichCatalogueWasNotRead) {
    game_.WriteFile("Quorvane/Certificates/mod.bin", "short");
    GameVerification game(options_);
    ASSERT_EQ(game.FindCatalogues(), ResultCode::Ok);
    EXPECT_EQ(game.ReadCatalogues(), ResultCode::FileInvalid);
    ASSERT_EQ(game.Catalogues().size(), 2U);
    EXPECT_EQ(game.Catalogues()[0].code, ResultCode::Ok);
    EXPECT_EQ(game.Catalogues()[1].code, ResultCode::FileInvalid);
    EXPECT_EQ(game.Catalogues()[1].nameUtf8, "mod.bin");
}

TEST_F(GameVerificationTest, FailureOfRuntimeConfigurationGoesBeforeThatOfAFile) {
    sealed_.AddRuntimeConfiguration();
    game_.WriteFile("a", "other content");
    GameVerification game(options_);
    ASSERT_EQ(game.FindCatalogues(), ResultCode::Ok);
    ASSERT_EQ(game.ReadCatalogues(), ResultCode::Ok);
    VerifyFiles(game);
    game_.WriteFile("Quorvane/Certificates/base.cer", "");
    EXPECT_EQ(game.VerifyRuntimeConfiguration(), RuntimeConfigurationVerdict::CertificateNotParsed);
    EXPECT_EQ(game.Result(), ResultCode::CertIOError);
}

TEST_F(GameVerificationTest, GoodGame) {
    sealed_.AddRuntimeConfiguration();
    GameVerification game(options_);
    ASSERT_EQ(game.FindCatalogues(), ResultCode::Ok);
    EXPECT_EQ(game.Directory(), game_ / "");
    ASSERT_EQ(game.ReadCatalogues(), ResultCode::Ok);
    VerifyFiles(game);
    EXPECT_EQ(game.VerifyRuntimeConfiguration(), RuntimeConfigurationVerdict::Good);
    EXPECT_EQ(game.Result(), ResultCode::Ok);
}

}  // namespace
}  // namespace sealkeeper
