#include "inspect/credentials/list_findings.h"

#include "inspect/credentials/detail_text.h"
#include "inspect/credentials/shell_word.h"

namespace sealkeeper {
namespace {

CredentialFinding NotAList(const ExaminedFile& file, FileKind kind) {
    const bool isPem = kind == FileKind::PemRevocationList;
    return MakeWarning(
        isPem ? "list-pem" : "not-a-list",
        "'" + file.path + "' is " + FileKindText(kind) +
            ". Generate puts it into the catalogue as it is, where a revocation list in DER form belongs.",
        isPem ? Cure{"Convert it, and name the new file by --crl (-incrl).",
                     "openssl crl -in " + ShellWord(file.path) + " -outform DER -out " +
                         ShellWord(file.path + ".der")}
              : Cure{"Name a revocation list in DER form by --crl (-incrl), or none."});
}

// A client that uses the list ignores one from another issuer and rejects a forged one.
CredentialFindings JudgeIssuer(const ListDetails& list, const ListIssuer& issuer) {
    const Cure cure = {
        "Name a list that was signed with the certificate's own key, or with its issuer's, or none."};
    if (!issuer.isRelated) {
        return {MakeWarning(
            "given-list-other-issuer",
            "The revocation list names '" + list.issuer +
                "' as its issuer: neither the certificate, as a list of its mods does, nor the certificate's issuer. Generate does not look into the list.",
            cure)};
    }
    if (issuer.isSigned == false) {
        return {MakeWarning(
            "given-list-signature",
            "The revocation list names '" + list.issuer +
                "' as its issuer, but is not signed with that one's key: another of the same name made it, or it was changed. Generate does not look into the list.",
            cure)};
    }
    return {};
}

CredentialFindings JudgeTimes(const ListDetails& list, const JudgingTime& time) {
    constexpr const char* kCure = "Have its issuer make a new list.";
    CredentialFindings findings;
    if (!list.nextUpdate) {
        findings.push_back(MakeWarning(
            "given-list-expired",
            "The revocation list names no next update, which counts as expired.", {kCure}));
    } else if (IsPast(*list.nextUpdate, time.now)) {
        findings.push_back(MakeWarning(
            "given-list-expired",
            "The revocation list expired on " + TimeText(*list.nextUpdate) + ".", {kCure}));
    } else if (EndsSoon(*list.nextUpdate, time)) {
        findings.push_back(MakeWarning("given-list-expires-soon",
                                       "The revocation list expires on " +
                                           TimeText(*list.nextUpdate) + ": " +
                                           DaysLeftText(*list.nextUpdate, time.now) + ".",
                                       {kCure}));
    }
    if (list.thisUpdate > time.now) {
        findings.push_back(MakeWarning(
            "given-list-not-yet-valid",
            "The revocation list is not valid before " + TimeText(list.thisUpdate) + ".",
            {"Set this machine's clock if it is wrong."}));
    }
    return findings;
}

}  // namespace

CredentialFindings JudgeGivenList(const GivenListFacts& list, const CertificateFacts& certificate,
                                  const JudgingTime& time) {
    const ExaminedFile& file = list.file;
    if (!file.kind) {
        return {MakeError(
            "list-unread", list.code,
            "The revocation list '" + file.path + "' cannot be read: " + file.reasonUnread + ".",
            {"Name a revocation list by --crl and let yourself read it, or name none."})};
    }
    if (!list.list) {
        return {NotAList(file, *file.kind)};
    }
    CredentialFindings findings =
        list.issuer ? JudgeIssuer(*list.list, *list.issuer) : CredentialFindings();
    if (list.revokesCertificate && certificate.details) {
        findings.push_back(
            MakeWarning("given-list-revokes",
                        "The revocation list has the certificate's own serial " +
                            certificate.details->serial + ". Generate does not look into the list.",
                        {"Have the authority issue a new certificate for a new key."}));
    }
    Append(findings, JudgeTimes(*list.list, time));
    return findings;
}

}  // namespace sealkeeper
