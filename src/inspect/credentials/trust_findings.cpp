#include "inspect/credentials/trust_findings.h"

#include <mbedtls/x509.h>

namespace sealkeeper {
namespace {

constexpr const char* kOtherAuthority =
    "Use a sealkeeper that was built with another authority (SEALKEEPER_TRUST_CA in docs/CERTIFICATES.md).";
constexpr const char* kNewerList =
    "Use a sealkeeper that was built with a newer list (SEALKEEPER_TRUST_CRL in docs/CERTIFICATES.md).";
constexpr const char* kSetClock = "Set this machine's clock, if it is wrong.";

CredentialFindings JudgeAuthorityDates(const CertificateDetails& authority,
                                       const JudgingTime& time) {
    CredentialFindings findings;
    if (IsPast(authority.notAfter, time.now)) {
        findings.push_back(MakeError(
            "authority-expired", CodeOfFlag(MBEDTLS_X509_BADCERT_EXPIRED),
            "The built-in authority expired on " + TimeText(authority.notAfter) +
                ": every certificate is refused as expired, however long it is valid itself.",
            {kOtherAuthority}));
    }
    if (EndsSoon(authority.notAfter, time)) {
        findings.push_back(MakeWarning("authority-expires-soon",
                                       "The built-in authority expires on " +
                                           TimeText(authority.notAfter) +
                                           ". Every certificate is refused from then on.",
                                       {kOtherAuthority}));
    }
    if (authority.notBefore > time.now) {
        findings.push_back(
            MakeError("authority-not-yet-valid", CodeOfFlag(MBEDTLS_X509_BADCERT_FUTURE),
                      "The built-in authority is not valid before " +
                          TimeText(authority.notBefore) + ": every certificate is refused.",
                      {kSetClock}));
    }
    return findings;
}

CredentialFindings JudgeAuthority(const AuthorityFacts& facts, const JudgingTime& time) {
    if (!facts.certificate) {
        return {MakeError(
            "authority-unreadable", facts.file.code,
            "The built-in authority is no certificate in DER form: every certificate is refused.",
            {kOtherAuthority})};
    }
    CredentialFindings findings = JudgeAuthorityDates(*facts.certificate, time);
    if (!facts.maySignCertificates) {
        findings.push_back(MakeError(
            "authority-may-not-sign", CodeOfFlag(MBEDTLS_X509_BADCERT_NOT_TRUSTED),
            "The built-in authority may not issue certificates, by its basic constraints or its key usage: every certificate is refused.",
            {kOtherAuthority}));
    } else if (!facts.maySignLists) {
        findings.push_back(MakeError(
            "authority-may-not-sign-lists", CodeOfFlag(MBEDTLS_X509_BADCRL_NOT_TRUSTED),
            "The built-in authority may not sign revocation lists, by its key usage: every certificate is refused.",
            {kOtherAuthority}));
    }
    return findings;
}

CredentialFindings JudgeListTimes(const ListDetails& list, const JudgingTime& time) {
    constexpr std::uint32_t kExpired = MBEDTLS_X509_BADCRL_EXPIRED;
    CredentialFindings findings;
    if (!list.nextUpdate) {
        findings.push_back(MakeError(
            "list-expired", CodeOfFlag(kExpired),
            "The built-in revocation list names no next update, which counts as expired: every certificate is refused.",
            {kNewerList}));
    } else if (IsPast(*list.nextUpdate, time.now)) {
        findings.push_back(MakeError("list-expired", CodeOfFlag(kExpired),
                                     "The built-in revocation list expired on " +
                                         TimeText(*list.nextUpdate) +
                                         ": every certificate is refused, whatever its own dates.",
                                     {kNewerList}));
    } else if (EndsSoon(*list.nextUpdate, time)) {
        findings.push_back(MakeWarning("list-expires-soon",
                                       "The built-in revocation list expires on " +
                                           TimeText(*list.nextUpdate) +
                                           ". Every certificate is refused from then on.",
                                       {kNewerList}));
    }
    if (list.thisUpdate > time.now) {
        findings.push_back(MakeError("list-not-yet-valid", CodeOfFlag(MBEDTLS_X509_BADCRL_FUTURE),
                                     "The built-in revocation list is not valid before " +
                                         TimeText(list.thisUpdate) +
                                         ": every certificate is refused.",
                                     {kSetClock}));
    }
    return findings;
}

CredentialFindings JudgeList(const TrustFacts& facts, const JudgingTime& time) {
    const BuiltInListFacts& list = facts.revocationList;
    if (!list.list) {
        return {MakeError(
            "list-unreadable", list.file.code,
            "The built-in revocation list is none in DER form: every certificate is refused.",
            {kNewerList})};
    }
    if (!facts.authority.certificate) {
        return {};
    }
    if (!list.namesAuthority) {
        return {MakeError(
            "list-of-another-issuer", std::nullopt,
            "The built-in revocation list is of another issuer, '" + list.list->issuer +
                "'. It is passed over in silence: certificates that the authority revoked are trusted.",
            {"Use a sealkeeper that was built with the authority's own list (SEALKEEPER_TRUST_CRL in docs/CERTIFICATES.md)."})};
    }
    CredentialFindings findings;
    if (list.isSignedByAuthority == false) {
        findings.push_back(MakeError(
            "list-signature", CodeOfFlag(MBEDTLS_X509_BADCRL_NOT_TRUSTED),
            "The built-in revocation list names the authority as its issuer, but is not signed by its key: every certificate is refused.",
            {kNewerList}));
    }
    Append(findings, JudgeListTimes(*list.list, time));
    return findings;
}

// Without fingerprints, development material cannot be recognised either.
CredentialFindings JudgeFingerprints(const TrustFacts& facts) {
    if (!facts.authority.file.fingerprint.empty() &&
        !facts.revocationList.file.fingerprint.empty()) {
        return {};
    }
    return {MakeWarning("fingerprint-unknown",
                        "The cryptographic library failed to hash the built-in authority or list.",
                        {"Run the command again."})};
}

}  // namespace

CredentialFindings JudgeTrust(const TrustFacts& facts, const JudgingTime& time) {
    CredentialFindings findings = JudgeAuthority(facts.authority, time);
    Append(findings, JudgeList(facts, time));
    Append(findings, JudgeFingerprints(facts));
    return findings;
}

CredentialFindings JudgeDevelopmentTrust(const TrustFacts& facts) {
    const bool isAuthority = facts.authority.file.isDevelopment.value_or(false);
    const bool isList = facts.revocationList.file.isDevelopment.value_or(false);
    if (!isAuthority && !isList) {
        return {};
    }
    const char* const message =
        !isList
            ? "The built-in authority is the development authority, whose private key is public: anybody can issue certificates that this program trusts."
        : !isAuthority
            ? "The built-in revocation list is the development authority's, and not that of the built-in authority."
            : "The built-in authority and its list are for development. The authority's private key is public: anybody can issue certificates that this program trusts.";
    return {MakeWarning(
        "development-trust", message,
        {"Release a sealkeeper that was built with trust material of your own (SEALKEEPER_TRUST_CA and SEALKEEPER_TRUST_CRL in docs/CERTIFICATES.md)."})};
}

}  // namespace sealkeeper
