#include "runtime/trust_material.h"

#include <gtest/gtest.h>
#include <mbedtls/asn1.h>

#include <cstdint>
#include <vector>

#include "runtime/certificate_trust.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/mbedtls_contexts.h"

namespace sealkeeper {
namespace {

// The build may use other trust material than the development one, so nothing here knows its bytes.

using Bytes = std::vector<std::uint8_t>;

Bytes BytesOf(const mbedtls_x509_buf& buffer) {
    return {buffer.p, buffer.p + buffer.len};
}

// The signature, which follows the signed part and the algorithm in a signed structure of RFC 5280.
// The library's own field for it is private since 3.0.
Bytes SignatureOf(const mbedtls_x509_buf& whole, const mbedtls_x509_buf& signedPart) {
    unsigned char* position = signedPart.p + signedPart.len;
    const unsigned char* end = whole.p + whole.len;
    std::size_t length = 0;
    EXPECT_EQ(mbedtls_asn1_get_tag(&position, end, &length,
                                   MBEDTLS_ASN1_CONSTRUCTED | MBEDTLS_ASN1_SEQUENCE),
              0);
    position += length;
    EXPECT_EQ(mbedtls_asn1_get_bitstring_null(&position, end, &length), 0);
    return {position, position + length};
}

int VerifyWith(mbedtls_pk_context& key, const mbedtls_x509_buf& whole,
               const mbedtls_x509_buf& signedPart) {
    Sha256Digest digest{};
    EXPECT_EQ(ComputeSha256(BytesOf(signedPart), digest), 0);
    const Bytes signature = SignatureOf(whole, signedPart);
    return mbedtls_pk_verify(&key, MBEDTLS_MD_SHA256, digest.data(), digest.size(),
                             signature.data(), signature.size());
}

class TrustMaterialTest : public testing::Test {
  protected:
    void SetUp() override {
        const TrustMaterial material = BuiltInTrustMaterial();
        ASSERT_EQ(ParseCertificate(material.authorityDer, authority_), 0);
        ASSERT_EQ(mbedtls_x509_crl_parse_der(list_.Get(), material.revocationListDer.data(),
                                             material.revocationListDer.size()),
                  0);
    }

    Certificate authority_;
    RevocationList list_;
};

TEST_F(TrustMaterialTest, IsOneCertificateAndOneListWithNothingAfterThem) {
    EXPECT_EQ(authority_.Get()->raw.len, BuiltInTrustMaterial().authorityDer.size());
    EXPECT_EQ(list_.Get()->raw.len, BuiltInTrustMaterial().revocationListDer.size());
    EXPECT_EQ(authority_.Get()->next, nullptr);
    EXPECT_EQ(list_.Get()->next, nullptr);
}

TEST_F(TrustMaterialTest, AuthoritySignedItself) {
    EXPECT_EQ(BytesOf(authority_.Get()->issuer_raw), BytesOf(authority_.Get()->subject_raw));
    EXPECT_EQ(VerifyWith(authority_.Get()->pk, authority_.Get()->raw, authority_.Get()->tbs), 0);
}

// The library silently ignores a list whose issuer is not the authority by name.
TEST_F(TrustMaterialTest, ListBearsTheNameOfTheAuthority) {
    EXPECT_EQ(BytesOf(list_.Get()->issuer_raw), BytesOf(authority_.Get()->subject_raw));
}

TEST_F(TrustMaterialTest, ListIsSignedByTheAuthority) {
    EXPECT_EQ(VerifyWith(authority_.Get()->pk, list_.Get()->raw, list_.Get()->tbs), 0);
}

TEST_F(TrustMaterialTest, AuthorityMaySignCertificatesAndLists) {
    EXPECT_EQ(mbedtls_x509_crt_check_key_usage(
                  authority_.Get(), MBEDTLS_X509_KU_KEY_CERT_SIGN | MBEDTLS_X509_KU_CRL_SIGN),
              0);
}

}  // namespace
}  // namespace sealkeeper
