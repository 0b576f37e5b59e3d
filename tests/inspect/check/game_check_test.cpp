// Checks of a game, from its catalogues to the report.
#include "inspect/check/game_check.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "app/sealed_game.h"
#include "support/quiet_log.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

class GameCheck : public testing::Test {
  protected:
    GameCheck() {
        game_.AddRuntimeConfiguration();
        game_.VerifyBy(options_);
    }

    [[nodiscard]] CheckReport Check() const { return CheckGame(options_); }

    // Expects the verification to end early with `code`, and returns the reason.
    [[nodiscard]] std::string FailureWith(ResultCode code) const {
        const CheckReport report = Check();
        EXPECT_EQ(report.code, code);
        EXPECT_EQ(report.runtimeConfiguration, std::nullopt);
        EXPECT_TRUE(report.additions.empty()) << "nobody looked for them";
        return report.failure;
    }

    static constexpr const char* kCertificates = "Quorvane/Certificates/";
    const test::QuietLog quiet_;
    test::SealedGame game_;
    CommandLineOptions options_;
};

// "catalogue path bytes code" for each file.
Lines FilesOf(const CheckReport& report) {
    Lines lines;
    for (const CheckedFile& file : report.files) {
        lines.push_back(report.catalogues.at(file.catalogueIndex).name + " " + file.path + " " +
                        std::to_string(file.listedSizeBytes) + " " + ResultCodeText(file.code));
    }
    return lines;
}

TEST_F(GameCheck, OfAGoodGame) {
    const CheckReport report = Check();
    EXPECT_EQ(report.gameDirectory, game_.Directory() / "");
    EXPECT_EQ(report.productId, test::kTestProductId);
    ASSERT_EQ(report.catalogues.size(), 2U);
    EXPECT_EQ(report.catalogues[0].name, "base.bin");
    EXPECT_EQ(report.catalogues[0].files, 2U);
    EXPECT_EQ(report.catalogues[1].name, "mod.bin");
    EXPECT_EQ(report.catalogues[1].files, 1U) << "its own, not those before it";
    EXPECT_EQ(FilesOf(report),
              (Lines{"base.bin a 12 Ok", "base.bin b/c 14 Ok", "mod.bin m 12 Ok"}));
    EXPECT_EQ(report.runtimeConfiguration, RuntimeConfigurationVerdict::Good);
    EXPECT_EQ(report.runtimeConfigurationFailure, "");
    EXPECT_EQ(report.failure, "");
    EXPECT_EQ(report.code, ResultCode::Ok);
    EXPECT_TRUE(report.additions.empty());
}

TEST_F(GameCheck, OfAGameInAnotherPlaceThanTheCurrentOne) {
    const test::TempDirectory elsewhere;
    const test::ScopedCurrentDirectory there(elsewhere.Path());
    options_.verifyDir = game_.Directory() / "./b/..";
    const CheckReport report = Check();
    EXPECT_EQ(report.gameDirectory, options_.verifyDir) << "as given";
    EXPECT_EQ(report.files.size(), 3U);
    EXPECT_TRUE(report.additions.empty());
}

TEST_F(GameCheck, OfFilesThatDiffer) {
    game_.Directory().WriteFile("a", "other text a");
    game_.Directory().WriteFile("b/c", "shorter");
    fs::remove("m");
    const CheckReport report = Check();
    EXPECT_EQ(FilesOf(report), (Lines{"base.bin a 12 FileVerificationHashMismatch",
                                      "base.bin b/c 14 FileVerificationSizeMismatch",
                                      "mod.bin m 12 FileVerificationIOError"}));
    EXPECT_EQ(report.failure, "") << "the verification came to its end";
    EXPECT_EQ(report.code, ResultCode::FileVerificationIOError);
    EXPECT_NE(report.code, ResultCode::Ok);
}

TEST_F(GameCheck, OfAGameWithMoreThanIsListed) {
    game_.Directory().WriteFile("new", "");
    const CheckReport report = Check();
    EXPECT_EQ(report.code, ResultCode::Ok);
    ASSERT_EQ(report.additions.size(), 1U);
    EXPECT_EQ(report.additions[0].path, "new");
}

TEST_F(GameCheck, OfSettingsThatWereChanged) {
    const std::string path = std::string(kCertificates) + "runtime.conf";
    std::string bytes = test::ReadFile(path);
    bytes[1036] = static_cast<char>(bytes[1036] + 1);
    game_.Directory().WriteFile(path, bytes);
    const CheckReport report = Check();
    EXPECT_EQ(report.runtimeConfiguration, RuntimeConfigurationVerdict::NotValid);
    EXPECT_NE(report.runtimeConfigurationFailure, "");
    EXPECT_EQ(report.code, CodeOf(RuntimeConfigurationVerdict::NotValid));
    EXPECT_EQ(report.failure, "");
}

TEST_F(GameCheck, OfAnAliasedPath) {
    game_.Directory().WriteFile("n/o", "1");
    PrivateKey key;
    test::LoadKey("good", key);
    HashCatalogue catalogue(test::kTestProductId);
    ASSERT_EQ(catalogue.CreateCatalogue(key.Get(), {}, {{L"n/o", {}}},
                                        L"Quorvane/Certificates/mod.bin", {{L"n", L"p"}}),
              ResultCode::Ok);
    const CheckReport report = Check();
    ASSERT_EQ(report.files.size(), 3U);
    EXPECT_FALSE(report.files[0].isAliased);
    EXPECT_TRUE(report.files[2].isAliased);
}

TEST_F(GameCheck, EndsWhereThereIsNoGame) {
    options_.verifyDir = game_.Directory() / "missing/";
    EXPECT_EQ(FailureWith(ResultCode::SealkeeperUsageError),
              "'" + options_.verifyDir + "': cannot be entered: No such file or directory");
    EXPECT_EQ(Check().gameDirectory, options_.verifyDir);
}

TEST_F(GameCheck, EndsWhereThereAreNoCatalogues) {
    fs::remove_all("Quorvane");
    EXPECT_NE(FailureWith(ResultCode::SealkeeperIOError).find("Quorvane/Certificates"),
              std::string::npos);
}

TEST_F(GameCheck, EndsAtACatalogueThatCannotBeUsed) {
    game_.Directory().WriteFile(std::string(kCertificates) + "mod.bin", "short");
    EXPECT_EQ(FailureWith(ResultCode::FileInvalid),
              "'Quorvane/Certificates/mod.bin': 9 (FileInvalid): it is damaged or cut off, or "
              "no catalogue");
    const CheckReport report = Check();
    ASSERT_EQ(report.catalogues.size(), 2U);
    EXPECT_EQ(report.catalogues[0].code, ResultCode::Ok);
    EXPECT_EQ(report.catalogues[1].code, ResultCode::FileInvalid);
    EXPECT_TRUE(report.files.empty());
}

TEST_F(GameCheck, EndsAtACertificateOfAnotherProduct) {
    options_.productId = "Another";
    EXPECT_EQ(FailureWith(ResultCode::CertificateCNMismatch),
              "'Quorvane/Certificates/base.bin': 31 (CertificateCNMismatch - check ProductId): "
              "the certificate beside it is of another product id than 'Another'");
}

TEST_F(GameCheck, EndsAtANameThatIsNoUtf8) {
    fs::rename(std::string(kCertificates) + "mod.bin", std::string(kCertificates) + "m\xFF.bin");
    const std::string failure = FailureWith(ResultCode::CatalogueError);
    EXPECT_TRUE(failure.ends_with(": 7 (CatalogueError): its name is not UTF-8")) << failure;
}

}  // namespace
}  // namespace sealkeeper
