#include "inspect/show/signature_facts.h"

#include <gtest/gtest.h>

#include <string>

#include "catalogue/signed_catalogue_support.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::TempDirectory;

class SignatureFactsTest : public testing::Test {
  protected:
    void WriteCertificate(const std::string& kind, const std::string& name = "base.cer") {
        directory_.WriteFile(name, test::TextOfBytes(test::CertificateBytes(kind)));
    }

    SignatureFacts Check(const Bytes& image, const std::string& name = "base.bin",
                         const std::optional<std::string>& productId = std::nullopt) {
        CatalogueFile file{image, {}};
        EXPECT_EQ(ReadCatalogueHeader(image, image.size(), file.header), ResultCode::Ok);
        return CheckCatalogueSignature(directory_ / name, file, productId);
    }

    SignerTrust TrustOf(const std::string& kind, const std::string& productId) {
        WriteCertificate(kind);
        const SignatureFacts facts = Check(test::SignedImage(kind), "base.bin", productId);
        EXPECT_EQ(facts.state, SignatureState::Good) << kind;
        EXPECT_TRUE(facts.trust.has_value()) << kind;
        return facts.trust.value_or(SignerTrust());
    }

    TempDirectory directory_;
};

TEST_F(SignatureFactsTest, Good) {
    WriteCertificate("good");
    const SignatureFacts facts = Check(test::SignedImage());
    EXPECT_EQ(facts.state, SignatureState::Good);
    EXPECT_EQ(facts.certificatePath, directory_ / "base.cer");
    EXPECT_EQ(facts.reason, "");
    EXPECT_FALSE(facts.trust.has_value());
}

TEST_F(SignatureFactsTest, CertificateOfTheSameName) {
    WriteCertificate("good", "mod.v2.cer");
    EXPECT_EQ(Check(test::SignedImage(), "mod.v2.bin").state, SignatureState::Good);
    WriteCertificate("good", "plain.cer");
    EXPECT_EQ(Check(test::SignedImage(), "plain").state, SignatureState::Good);
    directory_.WriteFile("dir.d/plain.cer", test::TextOfBytes(test::CertificateBytes("good")));
    EXPECT_EQ(Check(test::SignedImage(), "dir.d/plain").state, SignatureState::Good);
}

TEST_F(SignatureFactsTest, CertificateThatCannotBeUsed) {
    const SignatureFacts missing = Check(test::SignedImage());
    EXPECT_EQ(missing.state, SignatureState::CertificateMissing);
    EXPECT_EQ(missing.reason, "No such file or directory");
    directory_.WriteFile("dir.cer/file", "");
    EXPECT_EQ(Check(test::SignedImage(), "dir.bin").reason, "it is a directory");
    directory_.WriteFile("base.cer", "-----BEGIN CERTIFICATE-----");
    const SignatureFacts pem = Check(test::SignedImage(), "base.bin", test::kTestProductId);
    EXPECT_EQ(pem.state, SignatureState::CertificateUnusable);
    EXPECT_EQ(pem.reason, "it is no certificate in DER");
    EXPECT_FALSE(pem.trust.has_value());
}

TEST_F(SignatureFactsTest, Bad) {
    WriteCertificate("good");
    constexpr const char* kOther =
        "the file was changed after it was signed, or was signed with another key than the "
        "certificate's";
    Bytes changed = test::SignedImage();
    changed[1052] ^= 1;
    EXPECT_EQ(Check(changed).state, SignatureState::Bad);
    EXPECT_EQ(Check(changed).reason, kOther);
    EXPECT_EQ(Check(test::SignedImage("other-key")).reason, kOther);
    EXPECT_EQ(Check(test::SmallImage()).reason, "the file holds no signature");
    Bytes longer = test::SignedImage();
    test::StoreAt<std::uint32_t>(longer, 1032, 1025);
    EXPECT_EQ(Check(longer).reason, "its length, 1,025, is more than its area has");
    WriteCertificate("curve-key");
    EXPECT_EQ(Check(test::SignedImage()).reason, "the certificate's key is no RSA key");
    WriteCertificate("big-key");
    const SignatureFacts otherSize = Check(test::SignedImage());
    EXPECT_EQ(otherSize.state, SignatureState::Bad);
    EXPECT_EQ(
        otherSize.reason.find("it was made with a key of 2048 bits, and the certificate's has "),
        0U);
}

TEST_F(SignatureFactsTest, Trust) {
    const SignerTrust trusted = TrustOf("good", test::kTestProductId);
    EXPECT_TRUE(trusted.isTrusted);
    EXPECT_EQ(trusted.productId, test::kTestProductId);
    EXPECT_EQ(trusted.reason, "");
    EXPECT_FALSE(TrustOf("good", "Another").isTrusted);
    EXPECT_EQ(TrustOf("good", "Another").reason, "the certificate names another product id");
    EXPECT_EQ(TrustOf("expired", test::kTestProductId).reason, "the certificate has expired");
    EXPECT_EQ(TrustOf("revoked", test::kTestProductId).reason, "the certificate was revoked");
    EXPECT_EQ(
        TrustOf("mod", test::kTestProductId).reason,
        "the certificate was issued by a certificate other than the built-in authority, as a mod's is");
}

}  // namespace
}  // namespace sealkeeper
