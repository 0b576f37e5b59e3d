#include "inspect/show/revocation_facts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "inspect/x509/file_kind.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(RevocationFacts, EmptyBlock) {
    const RevocationFacts facts = RevocationFactsOf({});
    EXPECT_EQ(facts.lengthBytes, 0U);
    EXPECT_FALSE(facts.isList);
    EXPECT_EQ(facts.remark, "");
}

// As openssl prints trust/development/crl.der.
TEST(RevocationFacts, List) {
    const auto list = BuiltInTrustMaterial().revocationListDer;
    const RevocationFacts facts = RevocationFactsOf(list);
    EXPECT_TRUE(facts.isList);
    EXPECT_EQ(facts.lengthBytes, list.size());
    EXPECT_EQ(facts.issuer, "O=Sealkeeper, CN=Development CA that protects nothing");
    EXPECT_EQ(facts.thisUpdate, "2026-01-01T00:00:00Z");
    EXPECT_EQ(facts.nextUpdate, "2076-01-01T00:00:00Z");
    EXPECT_EQ(facts.revoked, 2U);
    EXPECT_EQ(facts.remark, "");
}

TEST(RevocationFacts, BytesAfterTheList) {
    const auto list = BuiltInTrustMaterial().revocationListDer;
    Bytes longer(list.begin(), list.end());
    longer.insert(longer.end(), {0, 0});
    EXPECT_EQ(RevocationFactsOf(longer).remark, FileKindText(FileKind::UnreadableSigned));
}

TEST(RevocationFacts, OtherBytes) {
    EXPECT_EQ(RevocationFactsOf(Bytes{1, 2, 3}).remark, "no revocation list in DER form");
    const std::string pem = "-----BEGIN X509 CRL-----\nMII";
    const RevocationFacts facts = RevocationFactsOf(Bytes(pem.begin(), pem.end()));
    EXPECT_FALSE(facts.isList);
    EXPECT_EQ(facts.lengthBytes, pem.size());
    EXPECT_EQ(facts.remark, "no revocation list in DER form, but a revocation list in PEM form");
}

}  // namespace
}  // namespace sealkeeper
