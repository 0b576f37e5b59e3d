#include "inspect/credentials/trust_findings.h"

#include <gtest/gtest.h>

#include "inspect/credentials/finding_names.h"
#include "inspect/report/command_status.h"

namespace sealkeeper {
namespace {

using std::chrono::days;
using std::chrono::seconds;
using test::Names;

constexpr UtcTime kJudged{seconds(1'800'000'000)};
constexpr JudgingTime kTime{kJudged, 30};

// Good for years.
TrustFacts GoodTrust() {
    CertificateDetails authority;
    authority.subject = "CN=Authority";
    authority.notBefore = kJudged - days(1000);
    authority.notAfter = kJudged + days(1000);
    ListDetails list;
    list.issuer = "CN=Authority";
    list.thisUpdate = kJudged - days(10);
    list.nextUpdate = kJudged + days(100);
    TrustFacts facts;
    facts.authority.file.fingerprint = "AB:CD";
    facts.authority.certificate = authority;
    facts.authority.maySignCertificates = true;
    facts.authority.maySignLists = true;
    facts.revocationList.file.fingerprint = "CD:EF";
    facts.revocationList.list = list;
    facts.revocationList.namesAuthority = true;
    facts.revocationList.isSignedByAuthority = true;
    return facts;
}

// Expects exactly this finding.
void ExpectFinding(const TrustFacts& facts, const char* name, std::optional<ResultCode> code,
                   int status) {
    const CredentialFindings findings = JudgeTrust(facts, kTime);
    ASSERT_EQ(Names(findings), name);
    EXPECT_EQ(findings[0].code, code) << name;
    EXPECT_EQ(StatusOf(findings), status) << name;
    EXPECT_FALSE(findings[0].cure.text.empty()) << name;
}

TEST(TrustFindings, NothingIsWrong) {
    EXPECT_EQ(Names(JudgeTrust(GoodTrust(), kTime)), "");
    EXPECT_EQ(StatusOf({}), kStatusGood);
}

TEST(TrustFindings, DatesOfTheAuthority) {
    TrustFacts facts = GoodTrust();
    UtcTime& end = facts.authority.certificate->notAfter;
    end = kJudged - seconds(1);
    ExpectFinding(facts, "authority-expired", ResultCode::CertificateExpired, kStatusError);
    end = kJudged;
    ExpectFinding(facts, "authority-expires-soon", std::nullopt, kStatusWarning);
    end = kJudged + days(30);
    ExpectFinding(facts, "authority-expires-soon", std::nullopt, kStatusWarning);
    end = kJudged + days(30) + seconds(1);
    EXPECT_EQ(Names(JudgeTrust(facts, kTime)), "");
    facts.authority.certificate->notBefore = kJudged;
    EXPECT_EQ(Names(JudgeTrust(facts, kTime)), "");
    facts.authority.certificate->notBefore = kJudged + seconds(1);
    ExpectFinding(facts, "authority-not-yet-valid", ResultCode::MbedTlsX509VerifyFailed,
                  kStatusError);
}

TEST(TrustFindings, DatesOfTheList) {
    TrustFacts facts = GoodTrust();
    std::optional<UtcTime>& end = facts.revocationList.list->nextUpdate;
    end = kJudged - seconds(1);
    ExpectFinding(facts, "list-expired", ResultCode::CertificateRLExpired, kStatusError);
    end.reset();
    ExpectFinding(facts, "list-expired", ResultCode::CertificateRLExpired, kStatusError);
    end = kJudged + days(30);
    ExpectFinding(facts, "list-expires-soon", std::nullopt, kStatusWarning);
    end = kJudged + days(31);
    facts.revocationList.list->thisUpdate = kJudged + seconds(1);
    ExpectFinding(facts, "list-not-yet-valid", ResultCode::MbedTlsX509VerifyFailed, kStatusError);
}

TEST(TrustFindings, WhoseListItIs) {
    TrustFacts facts = GoodTrust();
    facts.revocationList.isSignedByAuthority = false;
    ExpectFinding(facts, "list-signature", ResultCode::CertificateRLInvalid, kStatusError);
    facts.revocationList.isSignedByAuthority.reset();
    EXPECT_EQ(Names(JudgeTrust(facts, kTime)), "");
    facts.revocationList.namesAuthority = false;
    ExpectFinding(facts, "list-of-another-issuer", std::nullopt, kStatusError);
}

TEST(TrustFindings, WhatCannotBeRead) {
    TrustFacts facts = GoodTrust();
    facts.authority.certificate.reset();
    facts.authority.file.code = ResultCode::MbedTlsX509FormatError;
    ExpectFinding(facts, "authority-unreadable", ResultCode::MbedTlsX509FormatError, kStatusError);
    facts = GoodTrust();
    facts.revocationList.list.reset();
    facts.revocationList.file.code = ResultCode::MbedTlsX509FormatError;
    ExpectFinding(facts, "list-unreadable", ResultCode::MbedTlsX509FormatError, kStatusError);
    facts = GoodTrust();
    facts.authority.maySignCertificates = false;
    ExpectFinding(facts, "authority-may-not-sign", ResultCode::MbedTlsX509VerifyFailed,
                  kStatusError);
    facts.authority.maySignCertificates = true;
    facts.authority.maySignLists = false;
    ExpectFinding(facts, "authority-may-not-sign-lists", ResultCode::CertificateRLInvalid,
                  kStatusError);
}

TEST(TrustFindings, AMissingFingerprintIsAWarning) {
    for (const auto part : {0, 1}) {
        TrustFacts facts = GoodTrust();
        (part == 0 ? facts.authority.file.fingerprint : facts.revocationList.file.fingerprint)
            .clear();
        ExpectFinding(facts, "fingerprint-unknown", std::nullopt, kStatusWarning);
    }
}

TEST(TrustFindings, DevelopmentMaterialIsAWarning) {
    TrustFacts facts = GoodTrust();
    EXPECT_EQ(Names(JudgeDevelopmentTrust(facts)), "");
    facts.authority.file.isDevelopment = true;
    EXPECT_EQ(Names(JudgeDevelopmentTrust(facts)), "development-trust");
    EXPECT_EQ(StatusOf(JudgeDevelopmentTrust(facts)), kStatusWarning);
    facts = GoodTrust();
    facts.revocationList.file.isDevelopment = true;
    EXPECT_EQ(Names(JudgeDevelopmentTrust(facts)), "development-trust");
}

TEST(TrustFindings, ErrorsComeFirst) {
    TrustFacts facts = GoodTrust();
    facts.authority.certificate->notAfter = kJudged + days(1);
    facts.revocationList.list->nextUpdate = kJudged - days(1);
    CredentialFindings findings = JudgeTrust(facts, kTime);
    EXPECT_EQ(Names(findings), "authority-expires-soon list-expired");
    PutErrorsFirst(findings);
    EXPECT_EQ(Names(findings), "list-expired authority-expires-soon");
    EXPECT_EQ(StatusOf(findings), kStatusError);
}

}  // namespace
}  // namespace sealkeeper
