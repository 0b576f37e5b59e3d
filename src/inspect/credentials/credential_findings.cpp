#include "inspect/credentials/credential_findings.h"

#include <mbedtls/x509_crt.h>

#include <algorithm>
#include <array>

#include "inspect/credentials/certificate_findings.h"
#include "inspect/credentials/fault_findings.h"
#include "inspect/credentials/key_findings.h"
#include "inspect/credentials/list_findings.h"
#include "inspect/credentials/trust_findings.h"

namespace sealkeeper {
namespace {

// The library's own words, for a failure that no other finding explains.
CredentialFinding Unexplained(const CredentialFacts& facts, ResultCode code) {
    std::array<char, 1024> reasons{};
    const std::uint32_t flags = facts.certificate.check ? facts.certificate.check->flags : 0;
    // The library ends each text with a line feed.
    if (mbedtls_x509_crt_verify_info(reasons.data(), reasons.size(), " ", flags) < 0) {
        reasons.fill('\0');
    }
    std::string text = reasons.data();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return MakeError("refused", code,
                     "The cryptographic library refuses the certificate, and says:" +
                         (text.empty() ? " (nothing)" : text),
                     {"Have the authority issue a new certificate."});
}

bool IsExplained(const CredentialFindings& findings, ResultCode code) {
    return code == ResultCode::Ok ||
           std::any_of(findings.begin(), findings.end(),
                       [&](const CredentialFinding& finding) { return finding.code == code; });
}

}  // namespace

CredentialFindings JudgeCredentials(const CredentialFacts& facts, const JudgingTime& time) {
    CredentialFindings findings = JudgeCertificate(facts, time);
    // The certificate's findings already report swapped files.
    if (facts.key && !AreSwapped(facts)) {
        Append(findings, JudgeKey(*facts.key, facts.certificate.file));
    }
    if (facts.revocationList) {
        Append(findings, JudgeGivenList(*facts.revocationList, facts.certificate, time));
    }
    Append(findings, JudgeTrust(facts.trust, time));
    Append(findings, JudgeFaults(facts));
    if (const ResultCode code = GenerateCode(facts); !IsExplained(findings, code)) {
        findings.push_back(Unexplained(facts, code));
    }
    PutErrorsFirst(findings);
    return findings;
}

}  // namespace sealkeeper
