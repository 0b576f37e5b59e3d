#include "inspect/credentials/fault_findings.h"

#include <string>

namespace sealkeeper {
namespace {

constexpr const char* kTryAgain = "Run the command again.";

// Of a file that was read, or would be.
CredentialFindings JudgeUnknownMode(const ExaminedFile& file) {
    const bool isThere = file.reasonUnread.empty() || file.kind;
    if (file.mode || !isThere) {
        return {};
    }
    return {MakeWarning("mode-unknown",
                        "The system does not tell who may read and write '" + file.path + "'.",
                        {kTryAgain})};
}

CredentialFinding CheckFailed(const char* what) {
    return MakeError(
        "check-failed", std::nullopt,
        std::string("The cryptographic library took the ") + what + " once and refused it once.",
        {kTryAgain});
}

}  // namespace

CredentialFindings JudgeFaults(const CredentialFacts& facts) {
    CredentialFindings findings;
    // The same certificate was checked twice, the same list read twice.
    if (facts.certificate.code == ResultCode::Ok && facts.certificate.flags != 0) {
        findings.push_back(CheckFailed("certificate"));
    }
    if (facts.revocationList && facts.revocationList->list &&
        facts.revocationList->file.kind != FileKind::DerRevocationList) {
        findings.push_back(CheckFailed("revocation list"));
    }
    Append(findings, JudgeUnknownMode(facts.certificate.file));
    if (facts.key) {
        Append(findings, JudgeUnknownMode(facts.key->file));
    }
    if (facts.revocationList) {
        Append(findings, JudgeUnknownMode(facts.revocationList->file));
    }
    return findings;
}

}  // namespace sealkeeper
