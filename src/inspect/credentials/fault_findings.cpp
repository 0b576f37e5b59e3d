#include "inspect/credentials/fault_findings.h"

#include <optional>
#include <string>
#include <utility>

namespace sealkeeper {
namespace {

constexpr const char* kTryAgain = "Run the command again.";

// For a file that exists.
CredentialFindings JudgeUnknownMode(const ExaminedFile& file) {
    const bool isThere = file.reasonUnread.empty() || file.kind;
    if (file.mode || !isThere) {
        return {};
    }
    return {MakeWarning("mode-unknown",
                        "The system does not tell who may read and write '" + file.path + "'.",
                        {kTryAgain})};
}

CredentialFinding CheckFailed(ResultCode code, std::string message) {
    const bool isRefused = code != ResultCode::Ok;
    return MakeError("check-failed", isRefused ? std::optional(code) : std::nullopt,
                     std::move(message), {kTryAgain});
}

std::string TakenOnce(const char* what) {
    return std::string("The cryptographic library took the ") + what + " once and refused it once.";
}

// The certificate was checked twice: once by generate's own function, once for the reasons.
CredentialFindings JudgeCheck(const CertificateFacts& certificate, const TrustFacts& trust) {
    const bool isDer = certificate.file.kind == FileKind::DerCertificate;
    const bool canBeChecked =
        (isDer || certificate.details) && trust.authority.certificate && trust.revocationList.list;
    // Other findings say why it cannot be checked.
    if (!canBeChecked) {
        return {};
    }
    if (!certificate.check) {
        return {CheckFailed(certificate.code,
                            "The cryptographic library failed to check the certificate.")};
    }
    const bool isTaken = certificate.code == ResultCode::Ok;
    // Generate refuses PEM whatever it holds.
    if (!isDer || isTaken == certificate.check->isTrusted) {
        return {};
    }
    return {CheckFailed(certificate.code, TakenOnce("certificate"))};
}

}  // namespace

CredentialFindings JudgeFaults(const CredentialFacts& facts) {
    CredentialFindings findings = JudgeCheck(facts.certificate, facts.trust);
    // The list was parsed twice: for its kind, and for its details.
    if (facts.revocationList && facts.revocationList->list &&
        facts.revocationList->file.kind != FileKind::DerRevocationList) {
        findings.push_back(CheckFailed(ResultCode::Ok, TakenOnce("revocation list")));
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
