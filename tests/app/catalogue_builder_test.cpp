#include "app/catalogue_builder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "runtime/signing_material.h"
#include "support/captured_output.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

constexpr const char* kVersion = "config_info { version = 2; }\n";
constexpr const char* kSearch = "search_options { include_paths = [\"a.dat\"] }\n";
constexpr const char* kMatched =
    "[Info] Using config version: 2.\n"
    "[Info] The following matched certain files in the target directory: './a.dat'.\n";

// A complete run refuses some certificates earlier, so the builder is tested alone.
class CatalogueBuilderTest : public testing::Test {
  protected:
    CatalogueBuilderTest() : restored_(game_.Path()) {
        game_.WriteFile("a.dat", "a");
        std::filesystem::create_directories(game_ / "Quorvane/Certificates");
        options_.productId = test::kTestProductId;
        options_.programPath = "sealkeeper";
        options_.targetGameDir = game_.Path();
    }

    // Prepares with a configuration file of this content and the certificate of `kind`.
    ResultCode Prepare(const std::string& config, const std::string& kind = "good") {
        options_.configFile = game_.WriteFile("game.cfg", config);
        const SigningFiles files{test::PrivateKeyPath(kind), test::CertificatePath(kind), ""};
        EXPECT_EQ(LoadSigningMaterial(files, options_.productId, TrustCheck::Skipped,
                                      options_.signingMaterial),
                  ResultCode::Ok);
        const GeneratePaths paths = MakeGeneratePaths(options_);
        HashCatalogue catalogue(options_.productId);
        CatalogueBuilder builder(options_, paths, game_.Path() + "/", catalogue);
        CapturedOutput output;
        const ResultCode code = builder.Prepare();
        output_ = output.Take();
        return code;
    }

    [[nodiscard]] bool HasRuntimeConfiguration() const {
        return std::filesystem::exists(game_ / "Quorvane/Certificates/runtime.conf");
    }

    TempDirectory game_;
    ScopedCurrentDirectory restored_;
    CommandLineOptions options_;
    std::string output_;
};

TEST_F(CatalogueBuilderTest, WritesNoRuntimeConfigurationForAModCertificate) {
    EXPECT_EQ(Prepare(std::string(kVersion) + kSearch, "mod"), ResultCode::Ok);
    EXPECT_EQ(
        output_,
        kMatched +
            std::string(
                "[Err!] Failed to verify the certificate for product ID: TestProduct42\n"
                "[Info] Will not generate a configuration file as the provided certificate is for a mod.\n"));
    EXPECT_FALSE(HasRuntimeConfiguration());
}

TEST_F(CatalogueBuilderTest, InGameDevModeNobodyAsksWhoseCertificateItIs) {
    options_.gameDevMode = true;
    EXPECT_EQ(Prepare(std::string(kVersion) + kSearch, "mod"), ResultCode::Ok);
    EXPECT_TRUE(
        output_.starts_with(kMatched + std::string("\n[Info] ====================================="
                                                   "==\n[Info] The following configuration")))
        << output_;
    EXPECT_TRUE(HasRuntimeConfiguration());
}

TEST_F(CatalogueBuilderTest, AnotherVersionOfTheConfigurationFileEndsIt) {
    EXPECT_EQ(Prepare(std::string("config_info { version = 1; }\n") + kSearch),
              ResultCode::InitFailedConfig);
    EXPECT_EQ(output_, "[Err!] Unsupported config file version: 1.\n");
}

TEST_F(CatalogueBuilderTest, RulesThatFailEndIt) {
    EXPECT_EQ(Prepare(kVersion), ResultCode::InitFailedConfig);
    EXPECT_EQ(output_,
              "[Info] Using config version: 2.\n"
              "[Err!] Either include_paths or exclude_paths must be specified.\n");
}

TEST_F(CatalogueBuilderTest, SettingsThatFailLeaveNoRuntimeConfiguration) {
    EXPECT_EQ(Prepare(std::string(kVersion) + kSearch +
                      "runtime_configuration { anti_tamper_solution_name = \"None\" }\n"),
              ResultCode::InitFailedConfig);
    EXPECT_TRUE(output_.ends_with(
        "[Info] =======================================\n"
        "[Info] Please provide name of a supported anti-tamper solution, if the one being used is "
        "not specifically listed, use 'Generic'.\n"))
        << output_;
    EXPECT_FALSE(HasRuntimeConfiguration());
}

}  // namespace
}  // namespace sealkeeper
