#include <gtest/gtest.h>
#include <mbedtls/pk.h>
#include <mbedtls/sha256.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_signature.h"
#include "catalogue/catalogue_test_support.h"
#include "catalogue/catalogue_writer.h"
#include "catalogue/hash_catalogue.h"
#include "fault/fault_injection.h"
#include "runtime/runtime_configuration_writer.h"
#include "runtime/scramble.h"
#include "runtime/sign_buffer.h"
#include "runtime/signing_material.h"
#include "runtime/signing_test_support.h"
#include "runtime/stored_signature.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::FileBytes;
using test::IsAllZero;
using test::LoadKey;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::SignatureArea;
using test::TempDirectory;

const std::vector<std::uint8_t> kData = {1, 2, 3};
constexpr std::size_t kSignatureBytes = 256;

std::string ShownConfiguration() {
    return "[Info] The following configuration will be used by clients with the file present:\n"
           "[Info] Anti-cheat client configuration:\n"
           "[Info]     Version: 1\n"
           "[Info]     Maximum amount of active client instances: 1\n"
           "[Info]     Crash reporter name: N/A\n"
           "[Info]     Game binary anti tamper solution: None\n";
}

RuntimeConfiguration DefaultConfiguration() {
    RuntimeConfiguration configuration;
    configuration.version = 1;
    configuration.maxActiveInstances = 1;
    return configuration;
}

class SigningFaults : public testing::Test {
  protected:
    SigningFaults() { LoadKey("good", key_); }

    TempDirectory directory_;
    PrivateKey key_;
};

TEST_F(SigningFaults, CatalogueIsNotSignedWithoutEntropy) {
    std::array<std::uint8_t, 1024> area{};
    std::size_t length = 0;
    const ScopedFault fault(Call::SeedGenerator);
    CapturedOutput output;
    EXPECT_EQ(SignCatalogueImage(key_.Get(), kData, area.data(), &length),
              ResultCode::MbedTlsRandNumGenError);
    EXPECT_EQ(output.Take(), "");
    EXPECT_EQ(length, 0U);
    EXPECT_TRUE(IsAllZero(area));
}

TEST_F(SigningFaults, CatalogueWithoutEntropyIsNotWritten) {
    const ScopedCurrentDirectory here(directory_.Path());
    HashCatalogue catalogue("product");
    const ScopedFault fault(Call::SeedGenerator);
    CapturedOutput output;
    EXPECT_EQ(catalogue.CreateCatalogue(key_.Get(), {}, {{L"a", {}}}, L"base.bin", {}),
              ResultCode::MbedTlsRandNumGenError);
    EXPECT_EQ(output.Take(), "[Warn] [Warning] Empty file: 'a'.\n");
    EXPECT_FALSE(std::filesystem::exists("base.bin"));
}

TEST_F(SigningFaults, BufferWithoutEntropyHasASignatureOfNoBytes) {
    std::array<std::uint8_t, 1024> area{};
    area.fill(7);
    std::uint64_t length = 7;
    const ScopedFault fault(Call::SeedGenerator);
    CapturedOutput output;
    EXPECT_TRUE(SignBuffer(key_.Get(), kData.data(), kData.size(), area.data(), &length));
    EXPECT_EQ(output.Take(), "");
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(area[0], 0);
    EXPECT_EQ(area[1], 7);
}

// The digest is computed all the same, so ignoring the failure would sign it.
TEST_F(SigningFaults, NothingIsSignedWithoutADigest) {
    SignatureArea area{};
    std::size_t length = 7;
    std::uint64_t bufferLength = 7;
    const ScopedFault fault(Call::Sha256);
    CapturedOutput output;
    EXPECT_EQ(SignCatalogueImage(key_.Get(), kData, area.data(), &length),
              ResultCode::MbedTlsGenericError);
    EXPECT_FALSE(SignBuffer(key_.Get(), kData.data(), kData.size(), area.data(), &bufferLength));
    EXPECT_EQ(output.Take(), "");
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(bufferLength, 0U);
    EXPECT_TRUE(IsAllZero(area));
}

TEST_F(SigningFaults, NoSignatureHoldsWithoutADigest) {
    Certificate certificate;
    ASSERT_EQ(ParseCertificate(test::CertificateBytes("good"), certificate), 0);
    StoredSignature signature;
    const SigningOutcome signing = MakeSignature(key_.Get(), kData, signature.area);
    signature.lengthBytes = static_cast<std::uint32_t>(signing.lengthBytes);
    ASSERT_EQ(VerifySignature(&certificate.Get()->pk, kData, signature), 0);
    const ScopedFault fault(Call::Sha256);
    EXPECT_EQ(VerifySignature(&certificate.Get()->pk, kData, signature),
              MBEDTLS_ERR_SHA256_BAD_INPUT_DATA);
}

// The length that the library reports is then ignored.
TEST_F(SigningFaults, SignatureThatFailsHasNoLength) {
    SignatureArea area{};
    const ScopedFault fault(Call::Sign);
    const SigningOutcome outcome = MakeSignature(key_.Get(), kData, area);
    EXPECT_TRUE(outcome.isSeeded);
    EXPECT_EQ(outcome.result, MBEDTLS_ERR_PK_ALLOC_FAILED);
    EXPECT_EQ(outcome.lengthBytes, 0U);
}

TEST_F(SigningFaults, RuntimeConfigurationWithoutEntropyIsWrittenUnsigned) {
    {
        const ScopedFault fault(Call::SeedGenerator);
        CapturedOutput output;
        EXPECT_EQ(WriteRuntimeConfiguration(DefaultConfiguration(), key_.Get(), directory_ / ""),
                  ResultCode::Ok);
        EXPECT_EQ(output.Take(),
                  ShownConfiguration() +
                      "[Info] Anti-cheat client-side configuration file was successfully "
                      "created: '" +
                      (directory_ / "runtime.conf") + "'.\n");
        EXPECT_TRUE(fault.Struck());
    }
    std::vector<std::uint8_t> image = FileBytes(directory_ / "runtime.conf");
    ASSERT_EQ(image.size(), 1108U);
    Unscramble(image);
    EXPECT_EQ(test::Hex(std::span(image).first(4)), "51565200");
    EXPECT_TRUE(IsAllZero(std::span(image).subspan(4, 1028)));
    std::fill(image.begin() + 4, image.begin() + 1032, std::uint8_t{0});
    EXPECT_NE(test::VerifySignature("good", image, std::array<std::uint8_t, kSignatureBytes>{}), 0);
}

// So that a lack of entropy shows only at signing, and a bad key is reported first.
TEST(SigningMaterialFaults, RsaKeysAreReadAndComparedWithoutEntropy) {
    struct Case {
        std::string key;
        std::string certificate;
        int code;
    };
    const std::string good = test::CertificatePath("good");
    const ScopedFault fault(Call::SeedGenerator);
    for (const Case& one :
         std::vector<Case>{{test::PrivateKeyPath("good"), good, 0},
                           {test::CredentialPath("key-forms", "pkcs1.der"), good, 0},
                           {test::CredentialPath("key-forms", "pkcs8.der"), good, 0},
                           {test::PrivateKeyPath("big-key"), test::CertificatePath("big-key"), 0},
                           {test::PrivateKeyPath("other-key"), good, 11},
                           {test::CredentialPath("damaged", "truncated.key"), good, 15},
                           {test::PrivateKeyPath("encrypted-key"), good, 16}}) {
        SigningMaterial material;
        CapturedOutput output;
        EXPECT_EQ(ResultCodeNumber(LoadSigningMaterial({one.key, one.certificate, ""},
                                                       test::kTestProductId, TrustCheck::Required,
                                                       material)),
                  one.code)
            << one.key;
    }
    EXPECT_FALSE(fault.Struck());
}

// A disk may be full, or fail, at any of these.
constexpr std::array kWriteFaults = {Call::Write, Call::Fsync, Call::CloseWritten, Call::Rename};

TEST_F(SigningFaults, RuntimeConfigurationThatCannotBeWrittenIsNotThere) {
    const std::string path = directory_ / "runtime.conf";
    for (const Call writing : kWriteFaults) {
        CapturedOutput output;
        const ScopedFault fault(writing, 0, ScopedFault::Reach::Once);
        EXPECT_EQ(WriteRuntimeConfiguration(DefaultConfiguration(), key_.Get(), directory_ / ""),
                  ResultCode::SealkeeperIOError);
        EXPECT_EQ(output.Take(),
                  ShownConfiguration() + "[Err!] Error writing to file stream: '" + path + "'\n");
        EXPECT_TRUE(fault.Struck());
        EXPECT_TRUE(std::filesystem::is_empty(directory_.Path()));
    }
}

TEST_F(SigningFaults, CatalogueThatCannotBeWrittenIsNotThere) {
    const std::string path = directory_ / "base.bin";
    const std::vector<std::uint8_t> image(1000, 5);
    for (const Call writing : kWriteFaults) {
        CapturedOutput output;
        const ScopedFault fault(writing, 0, ScopedFault::Reach::Once);
        EXPECT_EQ(WriteCatalogueImage(std::wstring(path.begin(), path.end()), image),
                  ResultCode::CatalogueIOError);
        EXPECT_EQ(output.Take(), "[Err!] Error writing to file stream: '" + path + "'.\n");
        EXPECT_TRUE(fault.Struck());
        EXPECT_TRUE(std::filesystem::is_empty(directory_.Path()));
    }
}

TEST_F(SigningFaults, NegativeSizeIsAnInaccessibleFile) {
    const ScopedCurrentDirectory here(directory_.Path());
    directory_.WriteFile("\xC3\xA4", "x");
    CatalogueEntry entry;
    CapturedOutput output;
    const ScopedFault fault(Call::Stat, 0, ScopedFault::Reach::Once, -1);
    EXPECT_EQ(BuildCatalogueEntry(L"./\u00E4", entry), ResultCode::CatalogueIOError);
    EXPECT_EQ(output.Take(), "[Err!] [Error] Inaccessible file: './\xC3\xA4'.\n");
}

TEST_F(SigningFaults, FileThatVanishesBeforeItIsHashed) {
    const ScopedCurrentDirectory here(directory_.Path());
    directory_.WriteFile("a", "x");
    CatalogueEntry entry;
    CapturedOutput output;
    const ScopedFault fault(Call::Open);
    EXPECT_EQ(BuildCatalogueEntry(L"./a", entry), ResultCode::CatalogueError);
    EXPECT_EQ(output.Take(), "[Info] Hashing ./a...");
}

}  // namespace
}  // namespace sealkeeper
