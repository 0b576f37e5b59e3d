#include "inspect/credentials/chain_check.h"

#include <gtest/gtest.h>

#include "inspect/credentials/openssl.h"
#include "runtime/signing_test_support.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CertificateBytes;
using test::kTestProductId;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

std::optional<ChainCheck> CheckIssued(const std::string& kind,
                                      const TrustMaterial& trust = BuiltInTrustMaterial()) {
    Certificate certificate;
    EXPECT_EQ(ParseCertificate(CertificateBytes(kind), certificate), 0);
    return CheckChain(trust, kTestProductId, certificate);
}

// Checks a chain with so many authorities between the certificate and the built-in one.
std::optional<ChainCheck> CheckLongChain(int authorities) {
    const TempDirectory directory;
    Bytes pem = test::FileBytes(test::IssueChain(directory.Path(), kTestProductId, authorities));
    pem.push_back(0);
    Certificate chain;
    EXPECT_EQ(mbedtls_x509_crt_parse(chain.Get(), pem.data(), pem.size()), 0);
    return CheckChain(BuiltInTrustMaterial(), kTestProductId, chain);
}

TEST(ChainCheck, OfIssuedCertificates) {
    const std::vector<std::pair<std::string, unsigned>> kinds = {
        {"good", 0},
        {"expired", MBEDTLS_X509_BADCERT_EXPIRED},
        {"revoked", MBEDTLS_X509_BADCERT_REVOKED},
        {"other-name", MBEDTLS_X509_BADCERT_CN_MISMATCH},
        {"foreign", MBEDTLS_X509_BADCERT_NOT_TRUSTED},
    };
    for (const auto& [kind, flags] : kinds) {
        const auto check = CheckIssued(kind);
        ASSERT_TRUE(check) << kind;
        EXPECT_EQ(check->flags, flags) << kind;
        EXPECT_EQ(check->isTrusted, flags == 0) << kind;
    }
}

TEST(ChainCheck, AnExpiredAuthorityIsNoFaultOfTheCertificate) {
    const TempDirectory directory;
    const Bytes authority =
        test::IssueAuthority(directory.Path(), "20010101000000Z", "20020101000000Z");
    TrustMaterial trust = BuiltInTrustMaterial();
    trust.authorityDer = authority;
    const auto check = CheckIssued("good", trust);
    ASSERT_TRUE(check);
    EXPECT_EQ(check->flags, 0U);
    EXPECT_FALSE(check->isTrusted);
}

TEST(ChainCheck, ThereIsNoneWhereTheMaterialCannotBeRead) {
    const Bytes garbage = {0x00};
    TrustMaterial trust = BuiltInTrustMaterial();
    trust.authorityDer = garbage;
    EXPECT_FALSE(CheckIssued("good", trust));
    trust = BuiltInTrustMaterial();
    trust.revocationListDer = garbage;
    EXPECT_FALSE(CheckIssued("good", trust));
}

TEST(ChainCheck, ThereIsNoneWhereTheLibraryFails) {
    const auto check = CheckLongChain(1);
    ASSERT_TRUE(check);
    EXPECT_TRUE(check->isTrusted);
    // Longer than the library allows.
    EXPECT_FALSE(CheckLongChain(12));
}

}  // namespace
}  // namespace sealkeeper
