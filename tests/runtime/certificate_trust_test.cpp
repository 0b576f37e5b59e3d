#include "runtime/certificate_trust.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::CertificateBytes;
using test::FileBytes;
using test::kTestProductId;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

const Bytes kGarbage = {0x00};

// Whether the object has been cleared.
bool IsEmpty(const Certificate& certificate) {
    return certificate.Get()->raw.p == nullptr && certificate.Get()->raw.len == 0;
}

Bytes ParsedBytes(const Certificate& certificate) {
    const mbedtls_x509_buf& raw = certificate.Get()->raw;
    return {raw.p, raw.p + raw.len};
}

struct Attempt {
    std::string name;
    Bytes subject;
    Bytes parent;
    Bytes parentCrl;
    ResultCode code;
    std::string productId = kTestProductId;
};

// Also checks that the object holds the subject after a success and is empty after a failure.
void ExpectVerified(const TrustMaterial& trust, const Attempt& attempt) {
    Certificate certificate;
    // The object may hold an earlier certificate.
    ASSERT_EQ(ParseCertificate(CertificateBytes("big-key"), certificate), 0);
    CapturedOutput output;
    const ResultCode code = VerifySigningCertificate(
        trust, attempt.productId, attempt.subject, attempt.parent, attempt.parentCrl, certificate);
    EXPECT_EQ(output.Take(), "") << attempt.name;
    EXPECT_EQ(ResultCodeNumber(code), ResultCodeNumber(attempt.code)) << attempt.name;
    if (attempt.code == ResultCode::Ok) {
        EXPECT_EQ(ParsedBytes(certificate), attempt.subject) << attempt.name;
        EXPECT_EQ(certificate.Get()->next, nullptr) << attempt.name;
    } else {
        EXPECT_TRUE(IsEmpty(certificate)) << attempt.name;
    }
}

Bytes WithByteChanged(Bytes bytes, std::size_t index) {
    bytes.at(index) ^= 0x01U;
    return bytes;
}

Bytes DamagedFile(const std::string& name) {
    return FileBytes(test::CredentialPath("damaged", name));
}

ResultCode CodeOf(const Bytes& subject) {
    Certificate certificate;
    return VerifySigningCertificate(BuiltInTrustMaterial(), kTestProductId, subject, {}, {},
                                    certificate);
}

TEST(CertificateTrust, EverySingleByteChangeIsRefused) {
    const std::set<ResultCode> refusals = {
        ResultCode::MbedTlsGenericError,     ResultCode::MbedTlsX509VersionError,
        ResultCode::MbedTlsX509FormatError,  ResultCode::MbedTlsX509SigMismatch,
        ResultCode::MbedTlsX509VerifyFailed, ResultCode::CertificateExpired,
        ResultCode::CertificateCNMismatch,
    };
    const Bytes good = CertificateBytes("good");
    for (std::size_t i = 0; i < good.size(); ++i) {
        const ResultCode code = CodeOf(WithByteChanged(good, i));
        EXPECT_TRUE(refusals.contains(code)) << i << ": " << ResultCodeNumber(code);
    }
}

TEST(CertificateTrust, EveryTruncationIsRefused) {
    Bytes cut = CertificateBytes("good");
    ASSERT_EQ(CodeOf(cut), ResultCode::Ok);
    while (!cut.empty()) {
        cut.pop_back();
        EXPECT_EQ(CodeOf(cut), ResultCode::MbedTlsX509FormatError) << cut.size();
    }
}

TEST(CertificateTrust, ReadsCertificateFiles) {
    const TempDirectory directory;
    const std::string mebibyte(1'048'576, 'x');
    EXPECT_EQ(ReadCertificateBytes(test::CertificatePath("good")), CertificateBytes("good"));
    const std::string path = directory.WriteFile("a", mebibyte);
    EXPECT_TRUE(ReadCertificateBytes(path) == Bytes(mebibyte.begin(), mebibyte.end()));
    // A file longer than any certificate is cut.
    directory.WriteFile("a", mebibyte + "y");
    EXPECT_TRUE(ReadCertificateBytes(path) == Bytes(mebibyte.begin(), mebibyte.end()));
    EXPECT_EQ(ReadCertificateBytes(directory / "missing"), std::nullopt);
    EXPECT_EQ(ReadCertificateBytes(directory.Path()), std::nullopt);
}

TEST(CertificateTrust, ParsesOneDerCertificate) {
    Certificate certificate;
    const Bytes good = CertificateBytes("good");
    EXPECT_EQ(ParseCertificate(CertificateBytes("mod"), certificate), 0);
    EXPECT_EQ(ParseCertificate(good, certificate), 0);
    EXPECT_EQ(ParsedBytes(certificate), good);
    EXPECT_EQ(certificate.Get()->next, nullptr);
    EXPECT_LT(ParseCertificate(DamagedFile("pem.cer"), certificate), 0);
    EXPECT_TRUE(IsEmpty(certificate));
}

TEST(CertificateTrust, ParsesOneDerRevocationList) {
    RevocationList list;
    const Bytes der(BuiltInTrustMaterial().revocationListDer.begin(),
                    BuiltInTrustMaterial().revocationListDer.end());
    EXPECT_EQ(ParseRevocationList(der, list), 0);
    EXPECT_EQ(ParseRevocationList(der, list), 0);
    EXPECT_EQ(list.Get()->raw.len, der.size());
    EXPECT_EQ(list.Get()->next, nullptr);
    EXPECT_LT(ParseRevocationList(kGarbage, list), 0);
    EXPECT_EQ(list.Get()->raw.p, nullptr);
}

TEST(CertificateTrust, DirectAttempt) {
    const Bytes good = CertificateBytes("good");
    const std::vector<Attempt> attempts = {
        {"good", good, {}, {}, ResultCode::Ok},
        {"name in another case", good, {}, {}, ResultCode::Ok, "tESTpRODUCT42"},
        {"shorter name", good, {}, {}, ResultCode::CertificateCNMismatch, "TestProduct4"},
        {"longer name", good, {}, {}, ResultCode::CertificateCNMismatch, "TestProduct422"},
        {"space in front", good, {}, {}, ResultCode::CertificateCNMismatch, " TestProduct42"},
        {"no name", good, {}, {}, ResultCode::CertificateCNMismatch, ""},
        {"other name", CertificateBytes("other-name"), {}, {}, ResultCode::CertificateCNMismatch},
        {"revoked", CertificateBytes("revoked"), {}, {}, ResultCode::CertificateRevoked},
        {"expired", CertificateBytes("expired"), {}, {}, ResultCode::CertificateExpired},
        {"expired and revoked",
         CertificateBytes("expired-revoked"),
         {},
         {},
         ResultCode::CertificateExpired},
        {"other authority",
         CertificateBytes("foreign"),
         {},
         {},
         ResultCode::MbedTlsX509VerifyFailed},
        {"changed signature",
         WithByteChanged(good, good.size() - 1),
         {},
         {},
         ResultCode::MbedTlsX509VerifyFailed},
        {"PEM", DamagedFile("pem.cer"), {}, {}, ResultCode::MbedTlsX509FormatError},
        {"no bytes", {}, {}, {}, ResultCode::MbedTlsX509FormatError},
        {"truncated", DamagedFile("truncated.cer"), {}, {}, ResultCode::MbedTlsX509FormatError},
        // The tag of the signed part. The library adds the ASN.1 error to its own.
        {"wrong inner tag", WithByteChanged(good, 4), {}, {}, ResultCode::MbedTlsGenericError},
    };
    for (const Attempt& attempt : attempts) {
        ExpectVerified(BuiltInTrustMaterial(), attempt);
    }
}

TEST(CertificateTrust, AttemptsWithAParent) {
    const Bytes good = CertificateBytes("good");
    const Bytes mod = CertificateBytes("mod");
    const std::vector<Attempt> attempts = {
        {"mod and its game", mod, good, {}, ResultCode::Ok},
        {"direct success never looks at the parent", good, kGarbage, kGarbage, ResultCode::Ok},
        {"mod and another key of the game",
         mod,
         CertificateBytes("other-key"),
         {},
         ResultCode::MbedTlsX509VerifyFailed},
        {"mod and another game",
         mod,
         CertificateBytes("other-name"),
         {},
         ResultCode::CertificateCNMismatch},
        {"mod and its game by another product id",
         mod,
         good,
         {},
         ResultCode::CertificateCNMismatch,
         "TestProduct43"},
        {"revoked parent", mod, CertificateBytes("revoked"), {}, ResultCode::CertificateRevoked},
        {"expired parent", mod, CertificateBytes("expired"), {}, ResultCode::CertificateExpired},
        {"foreign parent",
         mod,
         CertificateBytes("foreign"),
         {},
         ResultCode::MbedTlsX509VerifyFailed},
        {"mod as its own parent", mod, mod, {}, ResultCode::MbedTlsX509VerifyFailed},
        {"garbage parent", mod, kGarbage, {}, ResultCode::MbedTlsX509FormatError},
        {"garbage parent list", mod, good, kGarbage, ResultCode::MbedTlsX509FormatError},
        {"garbage subject", kGarbage, good, {}, ResultCode::MbedTlsX509FormatError},
        // The code of the last attempt counts, and that one expects no name.
        {"expired subject", CertificateBytes("expired"), good, {}, ResultCode::CertificateExpired},
        {"subject of another name",
         CertificateBytes("other-name"),
         good,
         {},
         ResultCode::MbedTlsX509VerifyFailed},
    };
    for (const Attempt& attempt : attempts) {
        ExpectVerified(BuiltInTrustMaterial(), attempt);
    }
}

TEST(CertificateTrust, ModWithoutItsGameIsNotTrusted) {
    Certificate certificate;
    const ResultCode code = VerifySigningCertificate(BuiltInTrustMaterial(), kTestProductId,
                                                     CertificateBytes("mod"), {}, {}, certificate);
    EXPECT_NE(code, ResultCode::Ok);
    EXPECT_TRUE(IsEmpty(certificate));
}

// The library ignores a list whose issuer is not the parent by name.
TEST(CertificateTrust, ParentListOfAnotherIssuerIsPassedOver) {
    const TrustMaterial trust = BuiltInTrustMaterial();
    const Bytes list(trust.revocationListDer.begin(), trust.revocationListDer.end());
    ExpectVerified(trust, {"list of the authority", CertificateBytes("mod"),
                           CertificateBytes("good"), list, ResultCode::Ok});
}

// A list issued by the game's key with openssl, which revokes `serial`.
Bytes ListOfTheGame(const std::string& serial) {
    const TempDirectory directory;
    directory.WriteFile("index.txt",
                        "R\t491231235959Z\t200101000000Z\t" + serial + "\tunknown\t/CN=revoked\n");
    directory.WriteFile("ca.cnf",
                        "[ca]\ndefault_ca = game\n[game]\ndatabase = index.txt\n"
                        "default_md = sha256\ndefault_crl_days = 30\n");
    const std::string command = "cd '" + directory.Path() +
                                "' && { openssl x509 -inform DER -in '" +
                                test::CertificatePath("good") +
                                "' -out game.pem && openssl ca -gencrl -config ca.cnf -keyfile '" +
                                test::PrivateKeyPath("good") +
                                "' -cert game.pem -out list.pem && openssl crl -in list.pem "
                                "-outform DER -out list.der; } >log 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << test::ReadFile(directory / "log");
    return FileBytes(directory / "list.der");
}

TEST(CertificateTrust, ParentListRevokesMods) {
    const Bytes mod = CertificateBytes("mod");
    Certificate certificate;
    ASSERT_EQ(ParseCertificate(mod, certificate), 0);
    const mbedtls_x509_buf& serial = certificate.Get()->serial;
    const std::string modSerial = test::Hex(std::span(serial.p, serial.len));
    ExpectVerified(BuiltInTrustMaterial(), {"list of another mod", mod, CertificateBytes("good"),
                                            ListOfTheGame("0DEAD001"), ResultCode::Ok});
    Bytes list = ListOfTheGame(modSerial);
    ExpectVerified(BuiltInTrustMaterial(), {"list of this mod", mod, CertificateBytes("good"), list,
                                            ResultCode::CertificateRevoked});
    list.back() ^= 0x01U;
    ExpectVerified(BuiltInTrustMaterial(),
                   {"list with a changed signature", mod, CertificateBytes("good"), list,
                    ResultCode::CertificateRLInvalid});
}

TEST(CertificateTrust, OtherTrustMaterial) {
    const TrustMaterial trust = BuiltInTrustMaterial();
    const Bytes good = CertificateBytes("good");
    ExpectVerified({kGarbage, trust.revocationListDer},
                   {"garbage authority", good, {}, {}, ResultCode::MbedTlsX509FormatError});
    ExpectVerified({trust.authorityDer, kGarbage},
                   {"garbage list", good, {}, {}, ResultCode::MbedTlsX509FormatError});
    ExpectVerified(
        {trust.authorityDer, {}},
        {"without a list nothing is revoked", CertificateBytes("revoked"), {}, {}, ResultCode::Ok});
    Bytes forged(trust.revocationListDer.begin(), trust.revocationListDer.end());
    forged.back() ^= 0x01U;
    ExpectVerified(
        {trust.authorityDer, forged},
        {"list with a changed signature", good, {}, {}, ResultCode::CertificateRLInvalid});
}

bool IsTrusted(const TrustMaterial& trust, const std::string& kind, const std::string& productId,
               std::string& text) {
    Certificate certificate;
    EXPECT_EQ(ParseCertificate(CertificateBytes(kind), certificate), 0);
    CapturedOutput output;
    const bool trusted = CheckCertificateTrust(trust, certificate, productId);
    text = output.Take();
    return trusted;
}

TEST(CertificateTrust, CheckReportsTheProductId) {
    std::string text;
    EXPECT_TRUE(IsTrusted(BuiltInTrustMaterial(), "good", "testproduct42", text));
    EXPECT_EQ(text, "[Info] Successfully verified the certificate for product ID: testproduct42\n");
    for (const std::string kind : {"mod", "foreign", "expired", "revoked", "other-name"}) {
        EXPECT_FALSE(IsTrusted(BuiltInTrustMaterial(), kind, kTestProductId, text)) << kind;
        EXPECT_EQ(text, "[Err!] Failed to verify the certificate for product ID: TestProduct42\n")
            << kind;
    }
}

bool IsFromAnother(const TrustMaterial& trust, const std::string& kind) {
    Certificate certificate;
    EXPECT_EQ(ParseCertificate(CertificateBytes(kind), certificate), 0);
    return IsFromAnotherIssuer(trust, certificate);
}

TEST(CertificateTrust, AModsCertificateNamesAnotherIssuer) {
    const TrustMaterial trust = BuiltInTrustMaterial();
    EXPECT_TRUE(IsFromAnother(trust, "mod"));
    for (const std::string kind : {"good", "expired", "revoked", "other-name"}) {
        EXPECT_FALSE(IsFromAnother(trust, kind)) << kind;
    }
    EXPECT_FALSE(IsFromAnother({kGarbage, trust.revocationListDer}, "mod"));
}

TEST(CertificateTrust, CheckReportsDamagedTrustMaterial) {
    const TrustMaterial trust = BuiltInTrustMaterial();
    std::string text;
    // -0x2180 as an unsigned 32-bit number: invalid format.
    EXPECT_FALSE(IsTrusted({kGarbage, trust.revocationListDer}, "good", kTestProductId, text));
    EXPECT_EQ(text, "[Err!] Parsing embedded CA certificate failed with FFFFDE80\n");
    EXPECT_FALSE(IsTrusted({trust.authorityDer, kGarbage}, "good", kTestProductId, text));
    EXPECT_EQ(text, "[Err!] Parsing embedded CRL failed with FFFFDE80\n");
}

}  // namespace
}  // namespace sealkeeper
