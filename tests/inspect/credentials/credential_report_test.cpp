// The reports as text and as JSON, from invented facts.
#include <gtest/gtest.h>
#include <mbedtls/x509.h>

#include <nlohmann/json.hpp>

#include "inspect/credentials/credential_json.h"
#include "inspect/credentials/credential_text.h"
#include "inspect/credentials/trust_json.h"
#include "inspect/credentials/trust_text.h"
#include "inspect/report/console.h"

namespace sealkeeper {
namespace {

using std::chrono::days;

constexpr UtcTime kNow = std::chrono::sys_days(std::chrono::year(2027) / 1 / 1);

CertificateDetails Details(const char* subject) {
    CertificateDetails details;
    details.subject = std::string("CN=") + subject;
    details.issuer = "CN=Authority";
    details.commonNames = {subject};
    details.serial = "0102";
    details.notBefore = kNow - days(10);
    details.notAfter = kNow + days(355);
    details.key = {"RSA", true, 2048};
    details.signature = "RSA with SHA-256";
    return details;
}

TrustFacts Trust() {
    TrustFacts facts;
    facts.authority.certificate = Details("Authority");
    facts.authority.file.fingerprint = "AA:BB";
    facts.authority.file.isDevelopment = false;
    facts.authority.maySignCertificates = true;
    facts.authority.maySignLists = true;
    facts.revocationList.file.fingerprint = "CC:DD";
    facts.revocationList.file.isDevelopment = true;
    facts.revocationList.namesAuthority = true;
    facts.revocationList.isSignedByAuthority = true;
    facts.revocationList.list = {"CN=Authority",
                                 "RSA with SHA-256",
                                 kNow - days(1),
                                 kNow + days(1),
                                 {{"77", kNow - days(2)}}};
    return facts;
}

CredentialFacts Facts() {
    CredentialFacts facts;
    facts.certificate.file = {"a.cer", FileType::Regular, 0644, "", FileKind::DerCertificate};
    facts.certificate.details = Details("Game");
    facts.certificate.namesAuthority = true;
    facts.certificate.check = {.isTrusted = true, .flags = 0};
    KeyFacts key;
    key.file = {"a.key", FileType::Regular, 0600, "", std::nullopt};
    key.details = {"RSA", true, 2048};
    key.pairCode = ResultCode::MbedTlsGenericError;
    facts.key = key;
    facts.trust = Trust();
    return facts;
}

const CredentialFindings& Findings() {
    static const CredentialFindings kFindings = {
        MakeError("no-pair", ResultCode::MbedTlsGenericError, "They do not fit.",
                  {"Find another.", "find /"}),
        MakeWarning("key-mode", "It is open.", {"Close it."})};
    return kFindings;
}

constexpr const char* kBuiltInText =
    "Built into sealkeeper\n"
    "  authority    CN=Authority\n"
    "  valid        2026-12-22 00:00:00 UTC to 2027-12-22 00:00:00 UTC, 355 days left\n"
    "  revoked      1 serial: 77\n"
    "  list valid   2026-12-31 00:00:00 UTC to 2027-01-02 00:00:00 UTC, 1 day left\n"
    "\n";

TEST(CredentialReport, AsText) {
    EXPECT_EQ(
        CredentialText(Facts(), Findings(), kNow, Console()),
        std::string(
            "Certificate  a.cer\n"
            "  subject      CN=Game\n"
            "  product id   'Game' (common name)\n"
            "  serial       0102\n"
            "  valid        2026-12-22 00:00:00 UTC to 2027-12-22 00:00:00 UTC, 355 days left\n"
            "  key          RSA, 2048 bits\n"
            "  issuer       CN=Authority\n"
            "  signed by    RSA with SHA-256\n"
            "  chain        issued by the built-in authority, whose signature is good\n"
            "  revocation   not on the built-in list\n"
            "  file mode    644 (rw-r--r--)\n"
            "\n"
            "Private key  a.key\n"
            "  key          RSA, 2048 bits\n"
            "  pair         does not belong to the certificate\n"
            "  file mode    600 (rw-------)\n"
            "\n") +
            kBuiltInText +
            "error: They do not fit.\n"
            "  generate: 11 (MbedTlsGenericError)\n"
            "  cure: Find another.\n"
            "  run:  find /\n"
            "warning: It is open.\n"
            "  cure: Close it.\n"
            "\n"
            "Not checked: the product id (give it by --product).\n"
            "Generate would end with 11 (MbedTlsGenericError).\n");
}

// The lines on a certificate's state, without their labels.
std::string Standing(const CredentialFacts& facts) {
    const std::string text = CredentialText(facts, {}, kNow, Console());
    const std::size_t begin = text.find("  chain        ") + 15;
    const std::size_t between = text.find("\n  revocation   ", begin);
    const std::size_t end = text.find('\n', between + 1);
    return text.substr(begin, between - begin) + "; " +
           text.substr(between + 16, end - between - 16);
}

TEST(CredentialReport, ChainAndRevocation) {
    CredentialFacts facts = Facts();
    facts.certificate.check->flags = MBEDTLS_X509_BADCERT_REVOKED;
    EXPECT_EQ(Standing(facts),
              "issued by the built-in authority, whose signature is good; on the built-in list");
    facts.certificate.check->flags = MBEDTLS_X509_BADCERT_NOT_TRUSTED;
    EXPECT_EQ(Standing(facts),
              "names the built-in authority, whose signature it is not; not checked");
    facts.certificate.namesAuthority = false;
    EXPECT_EQ(Standing(facts), "not issued by the built-in authority; not checked");
    facts.certificate.isSelfSigned = true;
    EXPECT_EQ(Standing(facts), "issued by itself; not checked");
    facts.certificate.check->flags = 0;
    facts.trust.revocationList.namesAuthority = false;
    EXPECT_EQ(Standing(facts),
              "issued by the built-in authority, whose signature is good; not checked");
    facts.certificate.check.reset();
    EXPECT_EQ(Standing(facts), "not checked; not checked");
}

TEST(CredentialReport, ManySerialsAreCutInTheText) {
    CredentialFacts facts = Facts();
    facts.trust.revocationList.list->revoked.assign(1234, {"AB", std::nullopt});
    EXPECT_NE(CredentialText(facts, {}, kNow, Console())
                  .find("  revoked      1,234 serials: AB, AB, AB, AB, AB, AB, AB, AB, ...\n"),
              std::string::npos);
}

TEST(CredentialReport, NamesOfTheCertificate) {
    CredentialFacts facts = Facts();
    const auto has = [&](const std::string& line) {
        return CredentialText(facts, {}, kNow, Console()).find("  product id   " + line + "\n") !=
               std::string::npos;
    };
    facts.certificate.details->hasAlternativeNames = true;
    EXPECT_TRUE(has("none: the common name 'Game' does not count beside alternative names"));
    facts.certificate.details->dnsNames = {"a.b", "c.d"};
    EXPECT_TRUE(has(
        "'a.b' and 'c.d' (DNS names; the common name 'Game' does not count beside alternative names)"));
    facts.certificate.details->hasAlternativeNames = false;
    facts.certificate.details->commonNames.clear();
    EXPECT_TRUE(has("none: there is no common name"));
}

TEST(CredentialReport, AsJson) {
    const Json report = Json::parse(CredentialJson(Facts(), Findings(), kNow));
    const Json certificate = {{"path", "a.cer"},
                              {"mode", "644"},
                              {"kind", "a certificate in DER form"},
                              {"subject", "CN=Game"},
                              {"issuer", "CN=Authority"},
                              {"commonNames", {"Game"}},
                              {"dnsNames", Json::array()},
                              {"serial", "0102"},
                              {"notBefore", "2026-12-22T00:00:00Z"},
                              {"notAfter", "2027-12-22T00:00:00Z"},
                              {"daysLeft", 355},
                              {"key", {{"type", "RSA"}, {"bits", 2048}}},
                              {"signature", "RSA with SHA-256"},
                              {"chain", "authority"},
                              {"revocation", "not revoked"}};
    EXPECT_EQ(report["certificate"], certificate);
    const Json key = {{"path", "a.key"},
                      {"mode", "600"},
                      {"key", {{"type", "RSA"}, {"bits", 2048}}},
                      {"isPair", false}};
    EXPECT_EQ(report["privateKey"], key);
    EXPECT_FALSE(report.contains("productId"));
    EXPECT_FALSE(report.contains("revocationList"));
    EXPECT_EQ(report["findings"][0]["code"], 11);
    EXPECT_EQ(report["findings"][0]["result"], "MbedTlsGenericError");
    EXPECT_EQ(report["findings"][0]["command"], "find /");
    EXPECT_FALSE(report["findings"][1].contains("code"));
    EXPECT_FALSE(report["findings"][1].contains("command"));
    const Json generate = {{"code", 11}, {"result", "MbedTlsGenericError"}};
    EXPECT_EQ(report["generate"], generate);
    EXPECT_EQ(report["status"], 2);
}

TEST(CredentialReport, NamesThatAreNoUtf8KeepTheirBytesInJson) {
    CredentialFacts facts = Facts();
    facts.certificate.file.path = "\xff.cer";
    const Json report = Json::parse(CredentialJson(facts, {}, kNow));
    EXPECT_EQ(report["certificate"]["path"], "\xEF\xBF\xBD.cer");
    EXPECT_EQ(report["certificate"]["pathHex"], "ff2e636572");
    EXPECT_FALSE(report["privateKey"].contains("pathHex"));
}

TEST(TrustReport, AsText) {
    EXPECT_EQ(TrustText(Trust(), {}, kNow, Console()),
              "Built-in authority\n"
              "  subject      CN=Authority\n"
              "  serial       0102\n"
              "  key          RSA, 2048 bits\n"
              "  signed by    RSA with SHA-256\n"
              "  valid        2026-12-22 00:00:00 UTC to 2027-12-22 00:00:00 UTC, 355 days left\n"
              "  SHA-256      AA:BB\n"
              "  origin       not the development one\n"
              "\n"
              "Built-in revocation list\n"
              "  issuer       CN=Authority\n"
              "  signed by    RSA with SHA-256\n"
              "  revoked      1 serial: 77\n"
              "  valid        2026-12-31 00:00:00 UTC to 2027-01-02 00:00:00 UTC, 1 day left\n"
              "  SHA-256      CC:DD\n"
              "  origin       for development: protects nothing\n"
              "\n");
}

TEST(TrustReport, OfWhatCannotBeReadHasTheFingerprintsAlone) {
    TrustFacts facts = Trust();
    facts.authority.certificate.reset();
    facts.revocationList.list.reset();
    EXPECT_EQ(TrustText(facts, {}, kNow, Console()),
              "Built-in authority\n"
              "  SHA-256      AA:BB\n"
              "  origin       not the development one\n"
              "\n"
              "Built-in revocation list\n"
              "  SHA-256      CC:DD\n"
              "  origin       for development: protects nothing\n"
              "\n");
}

TEST(TrustReport, WithoutADigestTheOriginIsNotKnown) {
    TrustFacts facts = Trust();
    facts.authority.file = {};
    facts.revocationList.file = {};
    const std::string text = TrustText(facts, {}, kNow, Console());
    EXPECT_EQ(text.find("SHA-256  "), std::string::npos) << text;
    EXPECT_EQ(text.find("origin"), std::string::npos) << text;
    const Json report = Json::parse(TrustJson(facts, {}, kNow));
    for (const char* const part : {"authority", "revocationList"}) {
        EXPECT_FALSE(report[part].contains("sha256Fingerprint")) << part;
        EXPECT_FALSE(report[part].contains("isDevelopment")) << part;
    }
}

TEST(TrustReport, AsJson) {
    const Json report = Json::parse(TrustJson(Trust(), {}, kNow));
    EXPECT_EQ(report["authority"]["sha256Fingerprint"], "AA:BB");
    EXPECT_EQ(report["authority"]["isDevelopment"], false);
    const Json list = {{"issuer", "CN=Authority"},
                       {"signature", "RSA with SHA-256"},
                       {"thisUpdate", "2026-12-31T00:00:00Z"},
                       {"nextUpdate", "2027-01-02T00:00:00Z"},
                       {"daysLeft", 1},
                       {"revokedCount", 1},
                       {"revoked", {{{"serial", "77"}, {"revokedOn", "2026-12-30T00:00:00Z"}}}},
                       {"sha256Fingerprint", "CC:DD"},
                       {"isDevelopment", true}};
    EXPECT_EQ(report["revocationList"], list);
    EXPECT_EQ(report["status"], 0);
}

}  // namespace
}  // namespace sealkeeper
