#include "inspect/credentials/signature_check.h"

#include <gtest/gtest.h>

#include "inspect/credentials/openssl.h"
#include "runtime/signing_test_support.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CertificateBytes;
using test::FileBytes;
using test::PrivateKeyPath;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

// Whether the key of the certificate `signer` signed the certificate `der`.
std::optional<bool> IsSigned(const Bytes& signer, const Bytes& der) {
    Certificate issuer;
    EXPECT_EQ(ParseCertificate(signer, issuer), 0);
    Certificate certificate;
    EXPECT_EQ(ParseCertificate(der, certificate), 0);
    const mbedtls_x509_crt& parsed = *certificate.Get();
    return IsSignedBy(issuer.Get()->pk, {parsed.raw, parsed.tbs, parsed.sig_oid});
}

// A certificate signed with its own key, made with the openssl options `options`.
Bytes SignedByItself(const std::string& options) {
    const TempDirectory directory;
    test::RunShell(directory.Path(), "openssl req -x509 -new -days 400 -subj /CN=own -key '" +
                                         PrivateKeyPath("good") + "' -outform DER -out own.cer " +
                                         options);
    return FileBytes(directory / "own.cer");
}

TEST(SignatureCheck, TellsWhoseSignatureItIs) {
    const Bytes authority = FileBytes(test::AuthorityPath("ca.der"));
    EXPECT_EQ(IsSigned(authority, CertificateBytes("good")), true);
    EXPECT_EQ(IsSigned(authority, authority), true);
    EXPECT_EQ(IsSigned(authority, CertificateBytes("foreign")), false);
    EXPECT_EQ(IsSigned(CertificateBytes("good"), CertificateBytes("mod")), true);
    EXPECT_EQ(IsSigned(CertificateBytes("curve-key"), CertificateBytes("curve-key")), true);
}

TEST(SignatureCheck, SeesEveryChangedByteOfTheSignature) {
    const Bytes authority = FileBytes(test::AuthorityPath("ca.der"));
    const Bytes good = CertificateBytes("good");
    // The signature by a key of 4096 bits, at the end of the file.
    constexpr std::size_t kSignatureBytes = 512;
    for (const std::size_t fromEnd : {std::size_t{1}, kSignatureBytes / 2, kSignatureBytes}) {
        Bytes changed = good;
        changed.at(changed.size() - fromEnd) ^= 0x01U;
        EXPECT_EQ(IsSigned(authority, changed), false) << fromEnd;
    }
}

TEST(SignatureCheck, SeesAChangeOfWhatIsSigned) {
    Bytes changed = CertificateBytes("good");
    const std::string name = "TestProduct42";
    const auto found = std::search(changed.begin(), changed.end(), name.begin(), name.end());
    ASSERT_NE(found, changed.end());
    *found = 'B';
    EXPECT_EQ(IsSigned(FileBytes(test::AuthorityPath("ca.der")), changed), false);
}

TEST(SignatureCheck, OfAnAlgorithmWithParametersNothingIsKnown) {
    const Bytes plain = SignedByItself("-sha256");
    EXPECT_EQ(IsSigned(plain, plain), true);
    const Bytes pss = SignedByItself("-sha256 -sigopt rsa_padding_mode:pss");
    EXPECT_EQ(IsSigned(pss, pss), std::nullopt);
}

}  // namespace
}  // namespace sealkeeper
