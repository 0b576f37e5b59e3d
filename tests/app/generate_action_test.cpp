#include "app/generate_action.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/captured_output.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

class GenerateActionTest : public testing::Test {
  protected:
    GenerateActionTest() : here_(work_.Path()) {
        game_.WriteFile("a.dat", "a");
        options_.productId = test::kTestProductId;
        options_.targetGameDir = game_.Path();
        options_.configFile = work_.WriteFile(
            "game.cfg",
            "config_info { version = 2; }\nsearch_options { include_paths = [\"a.dat\"] }\n");
        SignWith("good");
    }

    void SignWith(const std::string& kind) {
        options_.privateKeyFile = test::PrivateKeyPath(kind);
        options_.certificateFile = test::CertificatePath(kind);
    }

    // A run stores into the options, so they are reset first.
    ResultCode Run() {
        options_.signingMaterial.privateKey.Reset();
        options_.configDocument = {};
        CapturedOutput output;
        const ResultCode code = RunGenerateAction(options_);
        output_ = output.Take();
        return code;
    }

    TempDirectory work_;
    TempDirectory game_;
    ScopedCurrentDirectory here_;
    CommandLineOptions options_;
    std::string output_;
};

TEST_F(GenerateActionTest, GameDirectoryThatDoesNotResolve) {
    for (const std::string& path : {std::string(), game_ / "missing\\sub"}) {
        options_.targetGameDir = path;
        EXPECT_EQ(Run(), ResultCode::CatalogueIOError);
        const std::string shown = path.empty() ? path : game_ / "missing/sub";
        EXPECT_EQ(output_, "[Info] Generating signed integrity files for: '" + shown +
                               "'.\n[Err!] The provided target game directory's path couldn't be "
                               "resolved, please make sure it's a valid path: '" +
                               shown + "'.\n" + ReadFile(SEALKEEPER_GOLDEN_DIR "/usage.txt"));
    }
}

TEST_F(GenerateActionTest, GameDirectoryThatIsAFile) {
    options_.targetGameDir = game_ / "a.dat";
    EXPECT_EQ(Run(), ResultCode::CatalogueIOError);
    EXPECT_EQ(output_, "[Info] Generating signed integrity files for: '" + (game_ / "a.dat") +
                           "'.\n[Err!] The provided path, when converted to absolute path: '" +
                           (game_ / "a.dat/") + "', does not point to an existing directory.\n");
}

TEST_F(GenerateActionTest, OutputDirectoryThatCannotBeMadeIsToldByTheStatusAlone) {
    game_.WriteFile("Quorvane", "a file");
    EXPECT_EQ(Run(), ResultCode::SealkeeperIOError);
    EXPECT_TRUE(output_.ends_with(
        "[Info] Generating the game's main catalogue alongside the associated folder structure.\n"))
        << output_;
}

TEST_F(GenerateActionTest, InGameDevModeTheCertificateIsNotChecked) {
    SignWith("expired");
    EXPECT_EQ(Run(), ResultCode::CertificateExpired) << output_;
    EXPECT_FALSE(std::filesystem::exists(game_ / "Quorvane"));
    options_.gameDevMode = true;
    EXPECT_EQ(Run(), ResultCode::Ok) << output_;
    EXPECT_EQ(ReadFile(game_ / "Quorvane/Certificates/base.cer"),
              ReadFile(test::CertificatePath("expired")));
}

}  // namespace
}  // namespace sealkeeper
