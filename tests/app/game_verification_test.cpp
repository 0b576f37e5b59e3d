#include "app/game_verification.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "runtime/runtime_configuration_writer.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::CertificatePath;
using test::kTestProductId;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

// An installed game with two catalogues: base.bin lists "a" and "b/c", mod.bin "m".
class GameVerificationTest : public testing::Test {
  protected:
    GameVerificationTest() : here_(game_.Path()) {
        for (const std::string name : {"a", "b/c", "m"}) {
            game_.WriteFile(name, "content of " + name);
        }
        Seal("base", {{L"a", {}}, {L"b/c", {}}});
        Seal("mod", {{L"m", {}}});
        options_.productId = kTestProductId;
        options_.verifyDir = game_ / "";
    }

    void Seal(const std::string& name, std::vector<FoundFile> files) {
        PrivateKey key;
        test::LoadKey("good", key);
        game_.WriteFile("Quorvane/Certificates/" + name + ".cer",
                        ReadFile(CertificatePath("good")));
        HashCatalogue catalogue(kTestProductId);
        const CapturedOutput output;
        ASSERT_EQ(
            catalogue.CreateCatalogue(
                key.Get(), {}, std::move(files),
                L"Quorvane/Certificates/" + std::wstring(name.begin(), name.end()) + L".bin", {}),
            ResultCode::Ok);
    }

    void SealRuntimeConfiguration() {
        PrivateKey key;
        test::LoadKey("good", key);
        RuntimeConfiguration configuration;
        configuration.version = 1;
        const CapturedOutput output;
        ASSERT_EQ(
            WriteRuntimeConfiguration(configuration, key.Get(), game_ / "Quorvane/Certificates/"),
            ResultCode::Ok);
    }

    // One line for each verdict.
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

    TempDirectory game_;
    ScopedCurrentDirectory here_;
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
    SealRuntimeConfiguration();
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
    SealRuntimeConfiguration();
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
