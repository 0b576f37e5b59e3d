#include "inspect/credentials/credential_findings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "inspect/credentials/finding_names.h"
#include "inspect/credentials/openssl.h"
#include "inspect/report/command_status.h"
#include "runtime/signing_test_support.h"
#include "support/quiet_log.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using std::chrono::days;
using test::AuthorityPath;
using test::CertificatePath;
using test::CredentialPath;
using test::FileBytes;
using test::kTestProductId;
using test::Names;
using test::PrivateKeyPath;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

UtcTime Now() {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

const CredentialFinding& Find(const CredentialFindings& findings, const std::string& name) {
    static const CredentialFinding kNone;
    for (const CredentialFinding& finding : findings) {
        if (finding.name == name) {
            return finding;
        }
    }
    ADD_FAILURE() << name << " is not among: " << Names(findings);
    return kNone;
}

class CredentialFindingsTest : public testing::Test {
  protected:
    // A copy that only its owner may read, as is right for a key.
    std::string OwnKey(const std::string& path) {
        const std::string copy = directory_ / ("key" + std::to_string(++copies_));
        test::RunShell("/", "cp '" + path + "' '" + copy + "' && chmod 600 '" + copy + "'");
        return copy;
    }

    CredentialFindings Judge(const CredentialFiles& files, UtcTime now = Now()) {
        facts_ = GatherCredentialFacts(files, trust_);
        return JudgeCredentials(facts_, {now, 30});
    }

    ResultCode Code() { return GenerateCode(facts_); }

    const test::QuietLog quiet_;
    const TempDirectory directory_;
    TrustMaterial trust_ = BuiltInTrustMaterial();
    CredentialFacts facts_;

  private:
    int copies_ = 0;
};

CredentialFiles Pair(const std::string& certificate, const std::string& key) {
    return {certificate, key, std::nullopt, kTestProductId};
}

TEST_F(CredentialFindingsTest, NothingIsWrongWithAGoodPair) {
    EXPECT_EQ(Names(Judge(Pair(CertificatePath("good"), OwnKey(PrivateKeyPath("good"))))), "");
    EXPECT_EQ(Code(), ResultCode::Ok);
    EXPECT_EQ(Names(Judge(Pair(CertificatePath("big-key"), OwnKey(PrivateKeyPath("big-key"))))),
              "");
    EXPECT_EQ(facts_.certificate.details->key.bits, 4096U);
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, {}, {}})), "");
}

struct IssuedKind {
    const char* kind;
    const char* names;
    ResultCode code;
};

TEST_F(CredentialFindingsTest, CertificatesOfIssuedKinds) {
    const std::vector<IssuedKind> certificates = {
        {"expired", "certificate-expired", ResultCode::CertificateExpired},
        {"revoked", "certificate-revoked", ResultCode::CertificateRevoked},
        {"expired-revoked", "certificate-expired certificate-revoked",
         ResultCode::CertificateExpired},
        {"other-name", "wrong-product", ResultCode::CertificateCNMismatch},
        {"foreign", "foreign-authority", ResultCode::MbedTlsX509VerifyFailed},
        {"mod", "other-issuer", ResultCode::MbedTlsX509VerifyFailed},
        {"exponent-3", "self-signed", ResultCode::MbedTlsX509VerifyFailed},
        {"weak-key", "self-signed weak-key", ResultCode::MbedTlsX509VerifyFailed},
        {"curve-key", "self-signed key-not-rsa", ResultCode::MbedTlsX509VerifyFailed},
    };
    for (const IssuedKind& certificate : certificates) {
        const CredentialFindings findings = Judge(
            Pair(CertificatePath(certificate.kind), OwnKey(PrivateKeyPath(certificate.kind))));
        EXPECT_EQ(Names(findings), certificate.names);
        EXPECT_EQ(Code(), certificate.code) << certificate.kind;
        EXPECT_EQ(findings.at(0).code, certificate.code) << certificate.kind;
        EXPECT_EQ(StatusOf(findings), kStatusError);
    }
}

TEST_F(CredentialFindingsTest, DatesAreJudgedByTheGivenTime) {
    const CredentialFiles files{CertificatePath("good"), {}, {}, kTestProductId};
    Judge(files);
    const UtcTime begin = facts_.certificate.details->notBefore;
    const UtcTime end = facts_.certificate.details->notAfter;
    EXPECT_EQ(Names(Judge(files, begin)), "");
    EXPECT_EQ(Names(Judge(files, end - days(30))), "certificate-expires-soon");
    EXPECT_EQ(StatusOf(Judge(files, end - days(30))), kStatusWarning);
    EXPECT_EQ(Names(Judge(files, end - days(30) - std::chrono::seconds(1))), "");
    EXPECT_EQ(Names(Judge(files, end + std::chrono::seconds(1))), "certificate-expired");
    for (const UtcTime time : {end - days(30), end + std::chrono::seconds(1)}) {
        const std::string cure = Judge(files, time).at(0).cure.text;
        EXPECT_NE(cure.find("for the same key, put it in place of the old one"), std::string::npos)
            << cure;
    }
    const CredentialFindings early = Judge(files, begin - std::chrono::seconds(1));
    EXPECT_EQ(Names(early), "certificate-not-yet-valid");
    EXPECT_EQ(early.at(0).code, ResultCode::MbedTlsX509VerifyFailed);
}

TEST_F(CredentialFindingsTest, TellsHowTheNameDiffers) {
    const auto message = [this](const std::string& product) {
        return Find(Judge({CertificatePath("good"), {}, {}, product}), "wrong-product").message;
    };
    EXPECT_EQ(
        message("TestProduct42 "),
        "The certificate is for 'TestProduct42', --product says 'TestProduct42 '. They differ in white space (letter case does not matter).");
    EXPECT_EQ(
        message("Other"),
        "The certificate is for 'TestProduct42', --product says 'Other'. They differ in more than white space and letter case.");
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, {}, "tESTpRODUCT42"})), "");
}

TEST_F(CredentialFindingsTest, PemThatIsCutOffMayBeDamaged) {
    const std::string pem = directory_.WriteFile(
        "cut.pem", test::ReadFile(CredentialPath("damaged", "pem.cer")).substr(0, 300));
    const CredentialFindings findings = Judge({pem, {}, {}, {}});
    EXPECT_EQ(Names(findings), "certificate-pem");
    EXPECT_EQ(
        findings.at(0).cure.text,
        "Convert it, and name the new file by --cert (-incert). If openssl cannot read it either, it is damaged: copy it anew from where it was issued.");
}

TEST_F(CredentialFindingsTest, FilesThatAreNoCertificate) {
    const std::string pem = CredentialPath("damaged", "pem.cer");
    const CredentialFindings findings = Judge({pem, {}, {}, kTestProductId});
    EXPECT_EQ(Names(findings), "certificate-pem");
    EXPECT_EQ(Code(), ResultCode::MbedTlsX509FormatError);
    EXPECT_EQ(findings.at(0).cure.command,
              "openssl x509 -in " + pem + " -outform DER -out " + pem + ".der");
    EXPECT_EQ(findings.at(0).cure.text, "Convert it, and name the new file by --cert (-incert).");
    // Its content is judged as well.
    EXPECT_EQ(Names(Judge({pem, {}, {}, "Other"})), "certificate-pem wrong-product");
    EXPECT_EQ(Code(), ResultCode::MbedTlsX509FormatError);
    EXPECT_EQ(Names(Judge({CredentialPath("damaged", "empty.cer"), {}, {}, {}})),
              "not-a-certificate");
    EXPECT_EQ(Names(Judge({directory_ / "gone", {}, {}, {}})), "certificate-unread");
    EXPECT_EQ(Code(), ResultCode::CertIOError);
    EXPECT_EQ(Names(Judge({PrivateKeyPath("good"), CertificatePath("good"), {}, {}})), "swapped");
    EXPECT_EQ(Code(), ResultCode::MbedTlsKeyFormatError);
}

TEST_F(CredentialFindingsTest, TheFirstCertificateInPemFormIsJudgedAlone) {
    for (const int authorities : {1, 12}) {
        const std::string chain = test::IssueChain(directory_.Path(), kTestProductId, authorities);
        EXPECT_EQ(Names(Judge({chain, {}, {}, kTestProductId})), "certificate-pem other-issuer")
            << authorities;
    }
}

struct Key {
    std::string path;
    const char* names;
    ResultCode code;
};

TEST_F(CredentialFindingsTest, Keys) {
    const auto form = [this](const char* name) {
        return OwnKey(CredentialPath("key-forms", name));
    };
    const std::vector<Key> keys = {
        {form("pkcs8.der"), "", ResultCode::Ok},
        {form("encrypted-pkcs8.pem"), "key-password", ResultCode::MbedTlsKeyPasswordError},
        {form("encrypted-pkcs8.der"), "key-password", ResultCode::MbedTlsKeyFormatError},
        {form("camellia-pkcs1.pem"), "key-password", ResultCode::MbedTlsGenericError},
        {form("public.pem"), "not-a-key", ResultCode::MbedTlsKeyFormatError},
        {form("pkcs12"), "not-a-key", ResultCode::MbedTlsKeyFormatError},
        {OwnKey(CredentialPath("damaged", "truncated.key")), "key-damaged",
         ResultCode::MbedTlsKeyFormatError},
        {OwnKey(PrivateKeyPath("other-key")), "no-pair", ResultCode::MbedTlsGenericError},
        {CertificatePath("good"), "not-a-key", ResultCode::MbedTlsKeyFormatError},
        {directory_.Path(), "key-unread", ResultCode::MbedTlsFileIOError},
        {directory_ / "gone", "key-missing", kPrivateKeyFileMissing},
    };
    for (const Key& key : keys) {
        const CredentialFindings findings = Judge(Pair(CertificatePath("good"), key.path));
        EXPECT_EQ(Names(findings), key.names) << key.path;
        EXPECT_EQ(Code(), key.code) << key.path;
    }
}

TEST_F(CredentialFindingsTest, AKeyThatOthersMayReadIsAWarning) {
    const std::string key = OwnKey(PrivateKeyPath("good"));
    const std::vector<std::pair<mode_t, std::string>> modes = {
        {0640, "The private key can be read by others: its mode is 640 (rw-r-----)."},
        {0604, "The private key can be read by others: its mode is 604 (rw----r--)."},
        {0620, "The private key can be changed by others: its mode is 620 (rw--w----)."},
        {0606, "The private key can be read and changed by others: its mode is 606 (rw----rw-)."},
    };
    for (const auto& [mode, message] : modes) {
        ASSERT_EQ(chmod(key.c_str(), mode), 0);
        const CredentialFindings findings = Judge(Pair(CertificatePath("good"), key));
        EXPECT_EQ(Names(findings), "key-mode");
        EXPECT_EQ(findings.at(0).message, message);
        EXPECT_EQ(findings.at(0).cure.command, "chmod 600 " + key);
        EXPECT_EQ(StatusOf(findings), kStatusWarning);
        EXPECT_EQ(Code(), ResultCode::Ok);
    }
    ASSERT_EQ(chmod(key.c_str(), 0700), 0);
    EXPECT_EQ(Names(Judge(Pair(CertificatePath("good"), key))), "");
}

TEST_F(CredentialFindingsTest, ThePairIsCheckedOfARefusedCertificateToo) {
    EXPECT_EQ(Names(Judge(Pair(CertificatePath("expired"), OwnKey(PrivateKeyPath("good"))))),
              "certificate-expired no-pair");
    EXPECT_EQ(Code(), ResultCode::CertificateExpired);
}

TEST_F(CredentialFindingsTest, GivenLists) {
    const auto judge = [this](const std::string& list, UtcTime now) {
        return Judge({CertificatePath("good"), {}, list, kTestProductId}, now);
    };
    Judge({CertificatePath("good"), {}, {}, {}});
    const std::string serial = facts_.certificate.details->serial;
    const UtcTime now = Now();
    EXPECT_EQ(Names(judge(AuthorityPath("crl.der"), now)), "");
    EXPECT_EQ(facts_.revocationList->list->revoked.size(), 2U);
    EXPECT_EQ(Names(judge(CertificatePath("good"), now)), "not-a-list");
    EXPECT_EQ(Code(), ResultCode::Ok);
    EXPECT_EQ(Names(judge(directory_ / "gone", now)), "list-unread");
    EXPECT_EQ(Code(), ResultCode::CertIOError);

    static_cast<void>(test::IssueList(directory_.Path(),
                                      {.nextUpdate = "20280101000000Z", .revokedSerial = serial}));
    EXPECT_EQ(Names(judge(directory_ / "list.pem", now)), "list-pem");
    const std::string list = directory_ / "list.der";
    EXPECT_EQ(Names(judge(list, now)), "given-list-revokes");
    const UtcTime end = std::chrono::sys_days(std::chrono::year(2028) / 1 / 1);
    EXPECT_EQ(Names(judge(list, end)), "given-list-revokes given-list-expires-soon");
    EXPECT_EQ(Names(judge(list, end + days(1))), "given-list-revokes given-list-expired");
}

TEST_F(CredentialFindingsTest, AnExpiredBuiltInListRefusesEverything) {
    const Bytes list = test::IssueList(
        directory_.Path(), {.lastUpdate = "20010101000000Z", .nextUpdate = "20020101000000Z"});
    trust_.revocationListDer = list;
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, {}, kTestProductId})), "list-expired");
    EXPECT_EQ(Code(), ResultCode::CertificateRLExpired);
}

TEST_F(CredentialFindingsTest, ABuiltInListOfTheFutureRefusesEverything) {
    const Bytes list = test::IssueList(
        directory_.Path(), {.lastUpdate = "20900101000000Z", .nextUpdate = "20910101000000Z"});
    trust_.revocationListDer = list;
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, {}, kTestProductId})),
              "list-not-yet-valid");
    EXPECT_EQ(Code(), ResultCode::MbedTlsX509VerifyFailed);
}

TEST_F(CredentialFindingsTest, AForgedBuiltInListRefusesEverything) {
    Bytes list = FileBytes(AuthorityPath("crl.der"));
    list.back() ^= 0x01U;
    trust_.revocationListDer = list;
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, {}, kTestProductId})), "list-signature");
    EXPECT_EQ(Code(), ResultCode::CertificateRLInvalid);
}

TEST_F(CredentialFindingsTest, AnExpiredAuthorityRefusesEverything) {
    const Bytes authority =
        test::IssueAuthority(directory_.Path(), "20010101000000Z", "20020101000000Z");
    trust_.authorityDer = authority;
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, {}, kTestProductId})), "authority-expired");
    EXPECT_EQ(Code(), ResultCode::CertificateExpired);
}

TEST_F(CredentialFindingsTest, MaterialThatCannotBeReadRefusesEverything) {
    const Bytes garbage = {0x00};
    trust_.authorityDer = garbage;
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, {}, kTestProductId})),
              "authority-unreadable");
    EXPECT_EQ(Code(), ResultCode::MbedTlsX509FormatError);
}

// Issued by the authority through openssl, from a request with the good key.
class IssuedCertificateTest : public CredentialFindingsTest {
  protected:
    std::string Issue(const std::string& options, const std::string& extensions = "",
                      const std::string& serial = "77") {
        test::RunShell(
            directory_.Path(),
            "printf '%s\\n' '" + extensions + "' > extensions\n" + "openssl req -new -key '" +
                PrivateKeyPath("good") + "' -subj /CN=TestProduct42 -out request.pem\n" +
                "openssl x509 -req -in request.pem -set_serial " + serial + " -days 400 " +
                options + " -extfile extensions -CAform DER -CA '" + AuthorityPath("ca.der") +
                "' -CAkey '" + AuthorityPath("ca_private.key") + "' -outform DER -out issued.cer");
        return directory_ / "issued.cer";
    }

    // A list of whoever has this name and the key of `kind`. Of `revokedSerial` if it is not empty.
    std::string ListOf(const std::string& name, const std::string& kind,
                       const std::string& revokedSerial = "") {
        const std::string key = PrivateKeyPath(kind);
        test::RunShell(directory_.Path(), "openssl req -x509 -new -days 400 -key '" + key +
                                              "' -subj '" + name + "' -out issuer.pem");
        static_cast<void>(test::IssueList(
            directory_.Path(),
            {.revokedSerial = revokedSerial, .issuer = "issuer.pem", .issuerKey = key}));
        return directory_ / "list.der";
    }
};

TEST_F(IssuedCertificateTest, AWeakDigestIsNamed) {
    const std::string certificate = Issue("-sha1");
    const CredentialFindings findings = Judge({certificate, {}, {}, kTestProductId});
    EXPECT_EQ(Names(findings), "weak-digest");
    EXPECT_EQ(
        findings.at(0).message,
        "The certificate is signed by RSA with SHA1, which the cryptographic library does not trust.");
    EXPECT_EQ(Code(), ResultCode::MbedTlsX509VerifyFailed);
}

TEST_F(IssuedCertificateTest, DnsNamesStandInForTheCommonName) {
    const std::string certificate =
        Issue("-sha256", "subjectAltName = DNS:one.example, DNS:two.example");
    const CredentialFindings findings = Judge({certificate, {}, {}, kTestProductId});
    EXPECT_EQ(Names(findings), "wrong-product");
    EXPECT_EQ(
        findings.at(0).message,
        "The certificate has the product id 'TestProduct42' as its common name, but alternative names too (DNS names 'one.example' and 'two.example'), and the cryptographic library compares DNS names in its place.");
    EXPECT_EQ(Names(Judge({certificate, {}, {}, "TWO.example"})), "");
    EXPECT_EQ(Names(Judge({certificate, {}, {}, {}})), "");
}

TEST_F(IssuedCertificateTest, AlternativeNamesWithoutDnsNamesStandInAsWell) {
    const std::string certificate = Issue("-sha256", "subjectAltName = email:me@example.org");
    const CredentialFindings findings = Judge({certificate, {}, {}, kTestProductId});
    EXPECT_EQ(Names(findings), "wrong-product");
    EXPECT_EQ(
        findings.at(0).message,
        "The certificate has the product id 'TestProduct42' as its common name, but alternative names too (no DNS names), and the cryptographic library compares DNS names in its place.");
    EXPECT_EQ(
        findings.at(0).cure.text,
        "Have a certificate issued without alternative names, or with the product id among them as a DNS name.");
    EXPECT_EQ(Code(), ResultCode::CertificateCNMismatch);
    EXPECT_EQ(Names(Judge({certificate, {}, {}, {}})), "wrong-product");
}

// Serial numbers of 40 bytes that differ only in the last.
TEST_F(IssuedCertificateTest, LongSerialsAreComparedToTheirEnd) {
    const std::string begin(78, '1');
    const std::string certificate = Issue("-sha256", "", "0x" + begin + "11");
    const auto judge = [&](const std::string& serial) {
        static_cast<void>(test::IssueList(directory_.Path(), {.revokedSerial = serial}));
        return Names(Judge({certificate, {}, directory_ / "list.der", kTestProductId}));
    };
    EXPECT_EQ(judge(begin + "12"), "");
    EXPECT_EQ(judge(begin + "11"), "given-list-revokes");
}

// The library shows both names as "CN=??".
TEST_F(IssuedCertificateTest, IssuersOutsideAsciiAreToldApart) {
    const std::string key = PrivateKeyPath("good");
    const auto listOf = [&](const std::string& issuer) {
        static_cast<void>(test::IssueList(
            directory_.Path(), {.revokedSerial = "4D", .issuer = issuer, .issuerKey = key}));
        return directory_ / "list.der";
    };
    test::RunShell(directory_.Path(),
                   "for name in Ä Ö; do openssl req -x509 -utf8 -new -set_serial 0x4D -days 400"
                   " -key '" +
                       key +
                       "' -subj /CN=$name -out $name.pem || exit 1; done\n"
                       "openssl x509 -in Ä.pem -outform DER -out Ä.cer");
    EXPECT_EQ(Names(Judge({directory_ / "Ä.cer", {}, listOf("Ö.pem"), {}})),
              "self-signed given-list-other-issuer");
    EXPECT_EQ(Names(Judge({directory_ / "Ä.cer", {}, listOf("Ä.pem"), {}})),
              "self-signed given-list-revokes");
}

// As mods are revoked: by a list of the product's own certificate.
TEST_F(IssuedCertificateTest, GivenListsOfTheCertificateItselfAreItsOwn) {
    const std::string certificate = Issue("-sha256", "");
    EXPECT_EQ(Names(Judge({certificate, {}, ListOf("/CN=TestProduct42", "good"), kTestProductId})),
              "");
    EXPECT_EQ(
        Names(Judge({certificate, {}, ListOf("/CN=TestProduct42", "other-key"), kTestProductId})),
        "given-list-signature");
    EXPECT_EQ(Code(), ResultCode::Ok);
}

TEST_F(IssuedCertificateTest, GivenListsOfAForeignAuthorityAreToldAsSuch) {
    const std::string list = ListOf("/CN=Foreign", "other-key");
    const CredentialFindings findings = Judge({CertificatePath("good"), {}, list, kTestProductId});
    EXPECT_EQ(Names(findings), "given-list-other-issuer");
    EXPECT_EQ(
        Find(findings, "given-list-other-issuer").message,
        "The revocation list names 'CN=Foreign' as its issuer: neither the certificate, as a "
        "list of its mods does, nor the certificate's issuer. Generate does not look into the "
        "list.");
    EXPECT_EQ(Names(Judge({directory_ / "gone", {}, list, {}})), "certificate-unread")
        << "nothing to compare it with";
}

// One of the built-in authority's name and another key.
TEST_F(IssuedCertificateTest, GivenListsWithABorrowedNameAreToldAsSuch) {
    const auto listOf = [this](const std::string& serial) {
        return ListOf("/O=Sealkeeper/CN=Development CA that protects nothing", "other-key", serial);
    };
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, listOf(""), kTestProductId})),
              "given-list-signature");
    const std::string serial = facts_.certificate.details->serial;
    EXPECT_EQ(Names(Judge({CertificatePath("good"), {}, listOf(serial), kTestProductId})),
              "given-list-signature")
        << "it revokes nothing";
}

// A mod's certificate may have the name of its issuer, whose key is not known here.
TEST_F(IssuedCertificateTest, GivenListsOfAModsIssuerOfTheSameNameAreNotCalledForged) {
    const std::string mod = CertificatePath("mod");
    EXPECT_EQ(Names(Judge({mod, {}, ListOf("/CN=TestProduct42", "good"), {}})), "other-issuer");
    const std::string serial = facts_.certificate.details->serial;
    ASSERT_EQ(facts_.certificate.details->subject, facts_.certificate.details->issuer);
    EXPECT_EQ(Names(Judge({mod, {}, ListOf("/CN=TestProduct42", "good", serial), {}})),
              "other-issuer given-list-revokes");
    EXPECT_EQ(Names(Judge({mod, {}, ListOf("/CN=TestProduct42", "mod"), {}})), "other-issuer");
}

// The key of an authority that only has the built-in one's name is not known either.
TEST_F(IssuedCertificateTest, GivenListsOfAForeignIssuerAreNotCalledForged) {
    const std::string list =
        ListOf("/O=Sealkeeper/CN=Development CA that protects nothing", "other-key");
    EXPECT_EQ(Names(Judge({CertificatePath("foreign"), {}, list, {}})), "foreign-authority");
}

TEST_F(IssuedCertificateTest, GivenListsOfOneThatSignedItselfMustHaveItsSignature) {
    test::RunShell(directory_.Path(), "openssl req -x509 -new -days 400 -subj /CN=own -key '" +
                                          PrivateKeyPath("good") + "' -outform DER -out own.cer");
    const std::string own = directory_ / "own.cer";
    EXPECT_EQ(Names(Judge({own, {}, ListOf("/CN=own", "good"), {}})), "self-signed");
    EXPECT_EQ(Names(Judge({own, {}, ListOf("/CN=own", "other-key"), {}})),
              "self-signed given-list-signature");
}

TEST(CredentialFindings, WhatNothingExplainsIsToldInTheLibrarysWords) {
    CredentialFacts facts;
    facts.certificate.file.kind = FileKind::DerCertificate;
    facts.certificate.code = ResultCode::MbedTlsX509VerifyFailed;
    facts.certificate.check = {.isTrusted = false, .flags = MBEDTLS_X509_BADCERT_MISSING};
    const CredentialFindings findings = JudgeCredentials(facts, {Now(), 30});
    EXPECT_EQ(Find(findings, "refused").code, ResultCode::MbedTlsX509VerifyFailed);
    EXPECT_NE(Find(findings, "refused").message.find("Certificate was missing"), std::string::npos);
}

}  // namespace
}  // namespace sealkeeper
