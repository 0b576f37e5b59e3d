#include "inspect/credentials/trust_facts.h"

#include <gtest/gtest.h>

#include <ctime>

#include "inspect/credentials/openssl.h"
#include "runtime/signing_test_support.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::AuthorityPath;
using test::CertificatePath;
using test::FileBytes;
using test::RunShell;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

// The text after the first "=".
std::string ValueOf(const std::string& line) {
    return line.substr(line.find('=') + 1);
}

// Parses a time as openssl prints it: "Jan  1 00:00:00 2026 GMT".
UtcTime TimeOf(const std::string& text) {
    std::tm time{};
    EXPECT_NE(strptime(text.c_str(), "%b %d %H:%M:%S %Y GMT", &time), nullptr) << text;
    return UtcTime(std::chrono::seconds(timegm(&time)));
}

std::string AskCertificate(const std::string& path, const std::string& option) {
    return ValueOf(RunShell("/", "openssl x509 -inform DER -noout -in '" + path + "' " + option));
}

std::string AskList(const std::string& path, const std::string& option) {
    return ValueOf(RunShell("/", "openssl crl -inform DER -noout -in '" + path + "' " + option));
}

Bytes AuthorityDer() {
    return FileBytes(AuthorityPath("ca.der"));
}

Bytes ListDer() {
    return FileBytes(AuthorityPath("crl.der"));
}

TEST(TrustFacts, OfTheAuthorityAreWhatOpensslPrints) {
    const std::string path = AuthorityPath("ca.der");
    const Bytes authority = AuthorityDer();
    const Bytes list = ListDer();
    const AuthorityFacts facts = GatherTrustFacts({authority, list}).authority;
    ASSERT_TRUE(facts.certificate);
    EXPECT_EQ(facts.file.code, ResultCode::Ok);
    EXPECT_EQ(facts.file.fingerprint, AskCertificate(path, "-fingerprint -sha256"));
    EXPECT_EQ(facts.certificate->serial, AskCertificate(path, "-serial"));
    EXPECT_EQ(facts.certificate->notBefore, TimeOf(AskCertificate(path, "-startdate")));
    EXPECT_EQ(facts.certificate->notAfter, TimeOf(AskCertificate(path, "-enddate")));
    EXPECT_EQ(facts.certificate->subject, "O=Sealkeeper, CN=Development CA that protects nothing");
    EXPECT_EQ(facts.certificate->key.type, "RSA");
    EXPECT_EQ(facts.certificate->key.bits, 4096U);
    EXPECT_EQ(facts.certificate->signature, "RSA with SHA-256");
    EXPECT_TRUE(facts.maySignCertificates);
    EXPECT_TRUE(facts.maySignLists);
    EXPECT_EQ(facts.file.isDevelopment, true);
}

TEST(TrustFacts, ACertificateOfAModMaySignNothing) {
    const Bytes mod = test::CertificateBytes("mod");
    const AuthorityFacts facts = GatherTrustFacts({mod, ListDer()}).authority;
    EXPECT_FALSE(facts.maySignCertificates);
    EXPECT_EQ(facts.file.isDevelopment, false);
}

TEST(TrustFacts, OfTheListAreWhatOpensslPrints) {
    const std::string path = AuthorityPath("crl.der");
    const Bytes authority = AuthorityDer();
    const Bytes list = ListDer();
    const BuiltInListFacts facts = GatherTrustFacts({authority, list}).revocationList;
    ASSERT_TRUE(facts.list);
    EXPECT_EQ(facts.file.fingerprint, AskList(path, "-fingerprint -sha256"));
    EXPECT_EQ(facts.list->thisUpdate, TimeOf(AskList(path, "-lastupdate")));
    EXPECT_EQ(facts.list->nextUpdate, TimeOf(AskList(path, "-nextupdate")));
    ASSERT_EQ(facts.list->revoked.size(), 2U);
    EXPECT_EQ(facts.list->revoked[0].serial, "0DEAD001");
    EXPECT_EQ(facts.list->revoked[1].serial, "0DEAD002");
    EXPECT_EQ(facts.list->revoked[0].revokedOn, facts.list->thisUpdate);
    EXPECT_TRUE(facts.namesAuthority);
    EXPECT_EQ(facts.isSignedByAuthority, true);
    EXPECT_EQ(facts.file.isDevelopment, true);
}

TEST(TrustFacts, ARefreshedListIsNotTheDevelopmentOne) {
    const TempDirectory directory;
    const Bytes authority = AuthorityDer();
    const Bytes list = test::IssueList(directory.Path(), {});
    const TrustFacts facts = GatherTrustFacts({authority, list});
    ASSERT_TRUE(facts.revocationList.list);
    EXPECT_TRUE(facts.revocationList.list->revoked.empty());
    EXPECT_EQ(facts.revocationList.isSignedByAuthority, true);
    EXPECT_EQ(facts.revocationList.file.isDevelopment, false);
    EXPECT_EQ(facts.authority.file.isDevelopment, true);
}

TEST(TrustFacts, AListWithAChangedSignatureIsNotTheAuthoritys) {
    const Bytes authority = AuthorityDer();
    Bytes list = ListDer();
    list.back() ^= 0x01U;
    const BuiltInListFacts facts = GatherTrustFacts({authority, list}).revocationList;
    EXPECT_TRUE(facts.namesAuthority);
    EXPECT_EQ(facts.isSignedByAuthority, false);
}

TEST(TrustFacts, AListOfAnotherIssuerIsKnown) {
    const TempDirectory directory;
    RunShell(directory.Path(),
             "openssl x509 -inform DER -in '" + CertificatePath("good") + "' -out game.pem");
    const Bytes authority = AuthorityDer();
    const Bytes list = test::IssueList(
        directory.Path(), {.issuer = "game.pem", .issuerKey = test::PrivateKeyPath("good")});
    const BuiltInListFacts facts = GatherTrustFacts({authority, list}).revocationList;
    EXPECT_FALSE(facts.namesAuthority);
    EXPECT_EQ(facts.list->issuer, "CN=TestProduct42");
}

TEST(TrustFacts, OfGarbageAreItsFingerprintAndTheToolsCode) {
    const Bytes garbage = {0x00};
    const TrustFacts facts = GatherTrustFacts({garbage, garbage});
    EXPECT_FALSE(facts.authority.certificate);
    EXPECT_FALSE(facts.revocationList.list);
    EXPECT_EQ(facts.authority.file.code, ResultCode::MbedTlsX509FormatError);
    EXPECT_EQ(facts.revocationList.file.code, ResultCode::MbedTlsX509FormatError);
    // printf '\0' | openssl sha256 -c
    EXPECT_EQ(
        facts.authority.file.fingerprint,
        "6E:34:0B:9C:FF:B3:7A:98:9C:A5:44:E6:BB:78:0A:2C:78:90:1D:3F:B3:37:38:76:85:11:A3:06:17:AF:A0:1D");
    EXPECT_EQ(facts.authority.file.isDevelopment, false);
}

}  // namespace
}  // namespace sealkeeper
