#include "inspect/credentials/fault_findings.h"

#include <gtest/gtest.h>

#include "inspect/report/command_status.h"

namespace sealkeeper {
namespace {

constexpr unsigned kMode = 0600;

ExaminedFile ReadFile() {
    ExaminedFile file;
    file.path = "a.file";
    file.type = FileType::Regular;
    file.mode = kMode;
    return file;
}

TrustFacts ReadTrust() {
    TrustFacts trust;
    trust.authority.certificate.emplace();
    trust.revocationList.list.emplace();
    return trust;
}

// All three files could be read, and the certificate is good.
CredentialFacts GoodFacts() {
    CredentialFacts facts;
    facts.trust = ReadTrust();
    facts.certificate.file = ReadFile();
    facts.certificate.file.kind = FileKind::DerCertificate;
    facts.certificate.details.emplace();
    facts.certificate.check = {.isTrusted = true, .flags = 0};
    facts.key.emplace().file = ReadFile();
    facts.revocationList.emplace().file = ReadFile();
    facts.revocationList->file.kind = FileKind::DerRevocationList;
    facts.revocationList->list.emplace();
    return facts;
}

void ExpectFinding(const CredentialFacts& facts, const std::string& name, int status,
                   std::optional<ResultCode> code = std::nullopt) {
    const CredentialFindings findings = JudgeFaults(facts);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].name, name);
    EXPECT_EQ(StatusOf(findings), status);
    EXPECT_EQ(findings[0].code, code);
}

TEST(FaultFindings, NothingFailed) {
    EXPECT_TRUE(JudgeFaults(GoodFacts()).empty());
}

TEST(FaultFindings, ACheckThatFailsOnceIsAnError) {
    CredentialFacts facts = GoodFacts();
    facts.certificate.check = {.isTrusted = false, .flags = MBEDTLS_X509_BADCRL_NOT_TRUSTED};
    ExpectFinding(facts, "check-failed", kStatusError);
    // Generate fails for a reason that other findings give.
    facts.certificate.code = ResultCode::CertificateRLInvalid;
    EXPECT_TRUE(JudgeFaults(facts).empty());
}

TEST(FaultFindings, ACertificateThatOnlyGenerateRefusesIsAnError) {
    CredentialFacts facts = GoodFacts();
    facts.certificate.code = ResultCode::CertificateExpired;
    ExpectFinding(facts, "check-failed", kStatusError, ResultCode::CertificateExpired);
    // Generate takes no PEM.
    facts.certificate.file.kind = FileKind::PemCertificate;
    EXPECT_TRUE(JudgeFaults(facts).empty());
}

TEST(FaultFindings, ACertificateThatWasNotCheckedIsAnError) {
    CredentialFacts facts = GoodFacts();
    facts.certificate.check.reset();
    ExpectFinding(facts, "check-failed", kStatusError);
    facts.certificate.details.reset();
    ExpectFinding(facts, "check-failed", kStatusError);
    facts.certificate.code = ResultCode::MbedTlsGenericError;
    ExpectFinding(facts, "check-failed", kStatusError, ResultCode::MbedTlsGenericError);
    // Other findings report unreadable trust material.
    facts.trust.revocationList.list.reset();
    EXPECT_TRUE(JudgeFaults(facts).empty());
    facts.trust = ReadTrust();
    facts.trust.authority.certificate.reset();
    EXPECT_TRUE(JudgeFaults(facts).empty());
    // And a file that is no certificate.
    facts.trust = ReadTrust();
    facts.certificate.file.kind = FileKind::PublicKey;
    EXPECT_TRUE(JudgeFaults(facts).empty());
}

TEST(FaultFindings, AListThatIsReadOnlyOnceIsAnError) {
    CredentialFacts facts = GoodFacts();
    facts.revocationList->file.kind = FileKind::UnreadableSigned;
    ExpectFinding(facts, "check-failed", kStatusError);
    // Other findings report what the file is.
    facts.revocationList->list.reset();
    EXPECT_TRUE(JudgeFaults(facts).empty());
}

TEST(FaultFindings, AModeThatIsNotKnownIsAWarning) {
    for (const auto file : {0, 1, 2}) {
        CredentialFacts facts = GoodFacts();
        ExaminedFile* const files[] = {&facts.certificate.file, &facts.key->file,
                                       &facts.revocationList->file};
        files[file]->mode.reset();
        ExpectFinding(facts, "mode-unknown", kStatusWarning);
        // An unreadable file has a finding of its own.
        files[file]->reasonUnread = "No such file or directory";
        files[file]->kind.reset();
        facts.revocationList->list.reset();
        EXPECT_TRUE(JudgeFaults(facts).empty());
        files[file]->kind = FileKind::DerCertificate;
        ExpectFinding(facts, "mode-unknown", kStatusWarning);
    }
}

}  // namespace
}  // namespace sealkeeper
