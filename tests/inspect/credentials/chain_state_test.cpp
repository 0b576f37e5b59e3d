#include "inspect/credentials/chain_state.h"

#include <gtest/gtest.h>
#include <mbedtls/x509.h>

#include <vector>

namespace sealkeeper {
namespace {

// Its issuer has the authority's name.
CertificateFacts Checked(std::uint32_t flags) {
    CertificateFacts facts;
    facts.details.emplace();
    facts.namesAuthority = true;
    facts.check = {.isTrusted = flags == 0, .flags = flags};
    return facts;
}

// With a list whose issuer has the authority's name.
TrustFacts BuiltInTrust() {
    TrustFacts facts;
    facts.revocationList.namesAuthority = true;
    return facts;
}

TEST(ChainState, IsTheAuthoritysUnlessTheLibraryDoesNotTrustIt) {
    const std::vector<std::uint32_t> otherFlags = {
        0, MBEDTLS_X509_BADCERT_EXPIRED, MBEDTLS_X509_BADCERT_REVOKED,
        MBEDTLS_X509_BADCERT_CN_MISMATCH, MBEDTLS_X509_BADCRL_EXPIRED};
    for (const std::uint32_t flags : otherFlags) {
        EXPECT_EQ(ChainOf(Checked(flags)), ChainState::Authority) << flags;
    }
}

TEST(ChainState, TellsWhoElseIssuedIt) {
    CertificateFacts facts = Checked(MBEDTLS_X509_BADCERT_NOT_TRUSTED);
    EXPECT_EQ(ChainOf(facts), ChainState::ForeignAuthority);
    facts.namesAuthority = false;
    EXPECT_EQ(ChainOf(facts), ChainState::OtherIssuer);
    facts.isSelfSigned = true;
    EXPECT_EQ(ChainOf(facts), ChainState::SelfSigned);
    facts.namesAuthority = true;
    EXPECT_EQ(ChainOf(facts), ChainState::ForeignAuthority);
}

TEST(ChainState, OfACertificateThatWasNotCheckedNothingIsKnown) {
    CertificateFacts facts = Checked(0);
    facts.check.reset();
    EXPECT_EQ(ChainOf(facts), ChainState::NotChecked);
    EXPECT_EQ(RevocationOf(facts, BuiltInTrust()), RevocationState::NotChecked);
}

TEST(RevocationState, IsToldByTheAuthoritysList) {
    EXPECT_EQ(RevocationOf(Checked(0), BuiltInTrust()), RevocationState::NotRevoked);
    EXPECT_EQ(RevocationOf(Checked(MBEDTLS_X509_BADCERT_EXPIRED), BuiltInTrust()),
              RevocationState::NotRevoked);
    EXPECT_EQ(RevocationOf(Checked(MBEDTLS_X509_BADCERT_REVOKED), BuiltInTrust()),
              RevocationState::Revoked);
}

TEST(RevocationState, IsNotKnownOfAnotherIssuerOrList) {
    EXPECT_EQ(RevocationOf(Checked(MBEDTLS_X509_BADCERT_NOT_TRUSTED), BuiltInTrust()),
              RevocationState::NotChecked);
    EXPECT_EQ(RevocationOf(Checked(MBEDTLS_X509_BADCRL_NOT_TRUSTED), BuiltInTrust()),
              RevocationState::NotChecked);
    EXPECT_EQ(RevocationOf(Checked(0), TrustFacts()), RevocationState::NotChecked);
}

}  // namespace
}  // namespace sealkeeper
