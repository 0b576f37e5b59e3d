#include "inspect/credentials/fault_findings.h"

#include <optional>
#include <string>
#include <utility>

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

CredentialFinding CheckFailed(ResultCode code, std::string message) {
    const bool isRefused = code != ResultCode::Ok;
    return MakeError("check-failed", isRefused ? std::optional(code) : std::nullopt,
                     std::move(message), {kTryAgain});
}

std::string TakenOnce(const char* what) {
    return std::string("The cryptographic library took the ") + what + " once and refused it once.";
}

// The same certificate was checked twice: for what generate makes of it, and for why.
CredentialFindings JudgeCheck(const CertificateFacts& certificate, const TrustFacts& trust) {
    const bool isDer = certificate.file.kind == FileKind::DerCertificate;
    const bool canBeChecked =
        (isDer || certificate.details) && trust.authority.certificate && trust.revocationList.list;
    // Other findings tell why not.
    if (!canBeChecked) {
        return {};
    }
    if (!certificate.check) {
        return {CheckFailed(certificate.code,
                            "The cryptographic library failed to check the certificate.")};
    }
    const bool isTaken = certificate.code == ResultCode::Ok;
    // Generate refuses PEM, whatever stands in it.
    if (!isDer || isTaken == certificate.check->isTrusted) {
        return {};
    }
    return {CheckFailed(certificate.code, TakenOnce("certificate"))};
}

}  // namespace

CredentialFindings JudgeFaults(const CredentialFacts& facts) {
    CredentialFindings findings = JudgeCheck(facts.certificate, facts.trust);
    // The same list was read twice.
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
