#include "inspect/x509/certificate_details.h"

#include <gtest/gtest.h>
#include <mbedtls/version.h>

#include "inspect/credentials/openssl.h"
#include "runtime/signing_test_support.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::AuthorityPath;
using test::CertificateBytes;
using test::FileBytes;
using test::IssueList;
using test::PrivateKeyPath;
using test::RunShell;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

void Parse(const Bytes& der, Certificate& certificate) {
    ASSERT_EQ(ParseCertificate(der, certificate), 0);
}

void Parse(const Bytes& der, RevocationList& list) {
    ASSERT_EQ(ParseRevocationList(der, list), 0);
}

// A self-signed certificate, made with the openssl options `options`.
CertificateDetails DetailsOfMade(const std::string& options) {
    const TempDirectory directory;
    RunShell(directory.Path(), "openssl req -x509 -utf8 -new -days 400 -key '" +
                                   PrivateKeyPath("good") + "' -outform DER -out made.cer " +
                                   options);
    Certificate certificate;
    Parse(FileBytes(directory / "made.cer"), certificate);
    return DetailsOfCertificate(*certificate.Get());
}

TEST(CertificateDetails, OfOneOfAnAuthority) {
    Certificate certificate;
    Parse(CertificateBytes("good"), certificate);
    const CertificateDetails details = DetailsOfCertificate(*certificate.Get());
    EXPECT_EQ(details.subject, "CN=TestProduct42");
    EXPECT_EQ(details.issuer, "O=Sealkeeper, CN=Development CA that protects nothing");
    EXPECT_EQ(details.commonNames, std::vector<std::string>{"TestProduct42"});
    EXPECT_TRUE(details.dnsNames.empty());
    EXPECT_FALSE(details.hasAlternativeNames);
    EXPECT_TRUE(details.key.isRsa);
    EXPECT_EQ(details.key.type, "RSA");
    EXPECT_EQ(details.key.bits, 2048U);
    EXPECT_EQ(details.signature, "RSA with SHA-256");
}

TEST(CertificateDetails, OfAKeyOfAnEllipticCurve) {
    Certificate certificate;
    Parse(CertificateBytes("curve-key"), certificate);
    const KeyDetails key = DetailsOfCertificate(*certificate.Get()).key;
    EXPECT_FALSE(key.isRsa);
    EXPECT_EQ(key.type, "EC");
    EXPECT_EQ(key.bits, 256U);
}

TEST(CertificateDetails, NamesThatCountAsTheProductId) {
    CertificateDetails details = DetailsOfMade("-subj /CN=one/CN=Zwei");
    EXPECT_EQ(details.commonNames, (std::vector<std::string>{"one", "Zwei"}));
    EXPECT_EQ(ComparedNames(details), details.commonNames);
    details = DetailsOfMade(
        "-subj /CN=one -addext 'subjectAltName = DNS:a.b, email:me@example.org, DNS:c.d'");
    EXPECT_TRUE(details.hasAlternativeNames);
    EXPECT_EQ(details.dnsNames, (std::vector<std::string>{"a.b", "c.d"}));
    EXPECT_EQ(ComparedNames(details), details.dnsNames);
    details = DetailsOfMade("-subj /CN=one -addext 'subjectAltName = email:me@example.org'");
    EXPECT_TRUE(details.hasAlternativeNames);
    EXPECT_TRUE(ComparedNames(details).empty());
}

TEST(CertificateDetails, CommonNamesKeepTheBytesThatTheSubjectLoses) {
    const CertificateDetails details = DetailsOfMade("-subj /CN=Ä");
    EXPECT_EQ(details.commonNames, std::vector<std::string>{"Ä"});
    // mbed TLS 3.6 escapes them (RFC 4514, 2.4).
    EXPECT_EQ(details.subject, MBEDTLS_VERSION_MAJOR < 3 ? "CN=??" : "CN=\\C3\\84");
}

TEST(CertificateDetails, SerialsAreHexadecimalAndCutAfter32Bytes) {
    const std::string longest(64, 'A');
    EXPECT_EQ(DetailsOfMade("-subj /CN=one -set_serial 0x4d").serial, "4D");
    EXPECT_EQ(DetailsOfMade("-subj /CN=one -set_serial 0x0" + longest.substr(0, 62)).serial,
              longest.substr(0, 62));
    EXPECT_EQ(DetailsOfMade("-subj /CN=one -set_serial 0x0" + longest).serial,
              longest.substr(0, 54) + "....");
}

TEST(ListDetails, OfAnEmptyListHasNoEntry) {
    const TempDirectory directory;
    RevocationList list;
    Parse(IssueList(directory.Path(), {}), list);
    const ListDetails details = DetailsOfList(*list.Get());
    EXPECT_EQ(details.issuer, "O=Sealkeeper, CN=Development CA that protects nothing");
    EXPECT_EQ(details.signature, "RSA with SHA-256");
    EXPECT_TRUE(details.revoked.empty());
    EXPECT_EQ(IsoTimeText(details.thisUpdate), "2026-01-01T00:00:00Z");
    ASSERT_TRUE(details.nextUpdate);
    EXPECT_EQ(IsoTimeText(*details.nextUpdate), "2076-01-01T00:00:00Z");
}

TEST(FindRevoked, TellsTheEntryByItsSerialAlone) {
    const TempDirectory directory;
    Certificate good;
    Parse(CertificateBytes("good"), good);
    Certificate revoked;
    Parse(CertificateBytes("revoked"), revoked);
    RevocationList list;
    Parse(FileBytes(AuthorityPath("crl.der")), list);
    const mbedtls_x509_crl_entry* const entry = FindRevoked(*list.Get(), *revoked.Get());
    ASSERT_NE(entry, nullptr);
    EXPECT_TRUE(IsSameEncoding(entry->serial, revoked.Get()->serial));
    EXPECT_EQ(FindRevoked(*list.Get(), *good.Get()), nullptr);

    RevocationList empty;
    Parse(IssueList(directory.Path(), {}), empty);
    EXPECT_EQ(FindRevoked(*empty.Get(), *revoked.Get()), nullptr);
}

TEST(IsSameEncoding, ComparesBytesAndLengths) {
    Bytes left = {1, 2, 3};
    Bytes right = {1, 2, 3};
    const mbedtls_x509_buf whole = {0, left.size(), left.data()};
    EXPECT_TRUE(IsSameEncoding(whole, {0, right.size(), right.data()}));
    EXPECT_FALSE(IsSameEncoding(whole, {0, right.size() - 1, right.data()}));
    right.back() = 4;
    EXPECT_FALSE(IsSameEncoding(whole, {0, right.size(), right.data()}));
}

}  // namespace
}  // namespace sealkeeper
