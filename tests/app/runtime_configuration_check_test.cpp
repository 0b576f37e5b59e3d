#include "app/runtime_configuration_check.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
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
using test::TempDirectory;

// An installed game's runtime.conf and the certificate beside it.
class RuntimeConfigurationCheck : public testing::Test {
  protected:
    RuntimeConfigurationCheck() {
        options_.productId = kTestProductId;
        Install("good");
    }

    // Signs runtime.conf with the key of `kind` and puts its certificate beside it.
    void Install(const std::string& kind) {
        PrivateKey key;
        test::LoadKey(kind, key);
        RuntimeConfiguration configuration;
        configuration.version = 1;
        const CapturedOutput output;
        ASSERT_EQ(WriteRuntimeConfiguration(configuration, key.Get(), directory_ / ""),
                  ResultCode::Ok);
        directory_.WriteFile("base.cer", ReadFile(CertificatePath(kind)));
    }

    ResultCode Check() {
        CapturedOutput output;
        verdict_ = CheckRuntimeConfiguration(options_, directory_ / "");
        output_ = output.Take();
        return CodeOf(verdict_);
    }

    [[nodiscard]] std::string Begun() const {
        return "[Info] Validating runtime configuration file at: " + (directory_ / "runtime.conf") +
               "\n";
    }
    [[nodiscard]] std::string Trusted() const {
        return "[Info] Successfully verified the certificate for product ID: TestProduct42\n";
    }
    [[nodiscard]] std::string Valid() const {
        return "[Info] Successfully validated runtime configuration: '" +
               (directory_ / "runtime.conf") + "'.\n";
    }
    [[nodiscard]] std::string Invalid() const {
        return "[Err!] Validation of runtime configuration failed: '" +
               (directory_ / "runtime.conf") + "'.\n";
    }

    TempDirectory directory_;
    CommandLineOptions options_;
    RuntimeConfigurationVerdict verdict_ = RuntimeConfigurationVerdict::NotRead;
    std::string output_;
};

TEST_F(RuntimeConfigurationCheck, SignedByTheKeyOfATrustedCertificate) {
    EXPECT_EQ(Check(), ResultCode::Ok);
    EXPECT_EQ(output_, Begun() + Trusted() + Valid());
    EXPECT_EQ(verdict_, RuntimeConfigurationVerdict::Good);
}

TEST_F(RuntimeConfigurationCheck, NothingIsLookedAtWithoutAFile) {
    std::filesystem::remove(directory_ / "runtime.conf");
    std::filesystem::remove(directory_ / "base.cer");
    EXPECT_EQ(Check(), ResultCode::Ok);
    EXPECT_EQ(output_, "");
    EXPECT_EQ(verdict_, RuntimeConfigurationVerdict::NotRead);
    std::filesystem::create_directory(directory_ / "runtime.conf");
    EXPECT_EQ(Check(), ResultCode::Ok);
    EXPECT_EQ(output_, "");
}

TEST_F(RuntimeConfigurationCheck, CertificateThatIsNotThere) {
    std::filesystem::remove(directory_ / "base.cer");
    for (const bool gameDevMode : {false, true}) {
        options_.gameDevMode = gameDevMode;
        EXPECT_EQ(Check(), ResultCode::CertIOError);
        EXPECT_EQ(verdict_, RuntimeConfigurationVerdict::CertificateNotRead);
        EXPECT_EQ(output_, Begun() + "[Err!] Failed to read certificate file " +
                               (directory_ / "base.cer") + ".\n");
    }
}

TEST_F(RuntimeConfigurationCheck, CertificateThatCannotBeParsed) {
    for (const std::string name : {"pem.cer", "truncated.cer", "empty.cer"}) {
        directory_.WriteFile("base.cer", ReadFile(test::CredentialPath("damaged", name)));
        for (const bool gameDevMode : {false, true}) {
            options_.gameDevMode = gameDevMode;
            EXPECT_EQ(Check(), ResultCode::CertIOError) << name;
            EXPECT_EQ(verdict_, RuntimeConfigurationVerdict::CertificateNotParsed) << name;
            EXPECT_EQ(output_, Begun() + "[Err!] Error parsing certificate file '" +
                                   (directory_ / "base.cer") + "'.\n")
                << name;
        }
    }
}

TEST_F(RuntimeConfigurationCheck, CertificateThatIsNotTrusted) {
    for (const std::string kind : {"expired", "revoked", "other-name", "foreign", "mod"}) {
        Install(kind);
        options_.gameDevMode = false;
        EXPECT_EQ(Check(), ResultCode::MbedTlsX509VerifyFailed) << kind;
        EXPECT_EQ(verdict_, RuntimeConfigurationVerdict::CertificateNotTrusted) << kind;
        EXPECT_EQ(output_, Begun() +
                               "[Err!] Failed to verify the certificate for product ID: "
                               "TestProduct42\n[Err!] Error verifying certificate file '" +
                               (directory_ / "base.cer") + "'.\n")
            << kind;
        // Under -gamedev any certificate is accepted, but not any signature.
        options_.gameDevMode = true;
        EXPECT_EQ(Check(), ResultCode::Ok) << kind;
        EXPECT_EQ(output_, Begun() + Valid()) << kind;
    }
}

TEST_F(RuntimeConfigurationCheck, SignedByAnotherKey) {
    directory_.WriteFile("base.cer", ReadFile(CertificatePath("other-key")));
    EXPECT_EQ(Check(), ResultCode::MbedTlsX509VerifyFailed);
    EXPECT_EQ(output_, Begun() + Trusted() + Invalid());
    EXPECT_EQ(verdict_, RuntimeConfigurationVerdict::NotValid);
    options_.gameDevMode = true;
    EXPECT_EQ(Check(), ResultCode::MbedTlsX509VerifyFailed);
    EXPECT_EQ(output_, Begun() + Invalid());
}

}  // namespace
}  // namespace sealkeeper
