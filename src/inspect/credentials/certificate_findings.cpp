#include "inspect/credentials/certificate_findings.h"

#include <mbedtls/x509_crt.h>

#include <array>

#include "inspect/credentials/chain_state.h"
#include "inspect/credentials/detail_text.h"
#include "inspect/credentials/kind_cure.h"
#include "inspect/credentials/name_findings.h"

namespace sealkeeper {
namespace {

constexpr const char* kAskForNew = "Have the authority issue a new certificate.";
constexpr const char* kReplaceCopies =
    " If it is for the same key, put it in place of the old one in installed games; nothing is sealed anew.";

constexpr const char* kConvert = "Convert it, and name the new file by --cert (-incert).";
constexpr const char* kIfDamaged =
    " If openssl cannot read it either, it is damaged: copy it anew from where it was issued.";
constexpr const char* kTakeOut =
    "Take the certificate out of it, and name the new file by --cert (-incert).";
constexpr const char* kSendRequest =
    "Send it to the authority, and name the certificate that comes back by --cert.";
constexpr const char* kCopyCertificateAnew =
    "Copy it anew from where it was issued, or have one issued for an RSA key without unusual extensions.";

constexpr std::array kCertificateCures = {
    KindCure{FileKind::PemCertificate, kConvert, "openssl x509 -in {in} -outform DER -out {out}"},
    KindCure{
        FileKind::DerPkcs7, kTakeOut,
        "openssl pkcs7 -inform DER -print_certs -in {in} | openssl x509 -outform DER -out {out}"},
    KindCure{FileKind::PemPkcs7, kTakeOut,
             "openssl pkcs7 -print_certs -in {in} | openssl x509 -outform DER -out {out}"},
    KindCure{FileKind::Pkcs12, kTakeOut,
             "openssl pkcs12 -clcerts -nokeys -in {in} | openssl x509 -outform DER -out {out}"},
    KindCure{FileKind::DerCertificateRequest, kSendRequest, ""},
    KindCure{FileKind::PemCertificateRequest, kSendRequest, ""},
    KindCure{FileKind::CutOffDer, kCopyCertificateAnew, ""},
    KindCure{FileKind::Empty, kCopyCertificateAnew, ""},
    KindCure{FileKind::UnreadableSigned, kCopyCertificateAnew, ""},
};

Cure CureOfKind(const std::string& path, FileKind kind) {
    return FindCure(kCertificateCures, kind, path, path + ".der")
        .value_or(Cure{"Name the certificate, as a rule base_public.cer, by --cert."});
}

// For a file that is no DER certificate.
CredentialFindings JudgeForm(const CredentialFacts& facts) {
    const ExaminedFile& file = facts.certificate.file;
    if (!file.kind) {
        return {MakeError(
            "certificate-unread", facts.certificate.code,
            "The certificate '" + file.path + "' cannot be read: " + file.reasonUnread + ".",
            {"Name the certificate, as a rule base_public.cer, by --cert, and let yourself read it."})};
    }
    if (AreSwapped(facts)) {
        return {MakeError(
            "swapped", facts.key->code,
            "The two are swapped: --cert names the private key, --key the certificate.",
            {"Name the certificate by --cert (-incert of sealkeeper) and the key by --key (-inkey)."})};
    }
    if (*file.kind == FileKind::DerCertificate) {
        return {};
    }
    const bool isPem = *file.kind == FileKind::PemCertificate;
    Cure cure = CureOfKind(file.path, *file.kind);
    if (isPem && !facts.certificate.details) {
        // The library knows fewer PEM labels than openssl, so it need not be damaged.
        cure.text += kIfDamaged;
    }
    return {MakeError(isPem ? "certificate-pem" : "not-a-certificate", facts.certificate.code,
                      "'" + file.path + "' is " + FileKindText(*file.kind) +
                          "; sealkeeper takes a certificate in DER form alone.",
                      cure)};
}

CredentialFindings JudgeDates(const CertificateDetails& certificate, const JudgingTime& time) {
    CredentialFindings findings;
    if (IsPast(certificate.notAfter, time.now)) {
        findings.push_back(
            MakeError("certificate-expired", CodeOfFlag(MBEDTLS_X509_BADCERT_EXPIRED),
                      "The certificate expired on " + TimeText(certificate.notAfter) +
                          "; this machine's clock says " + TimeText(time.now) + ".",
                      {std::string(kAskForNew) + kReplaceCopies}));
    }
    if (EndsSoon(certificate.notAfter, time)) {
        findings.push_back(MakeWarning(
            "certificate-expires-soon",
            "The certificate expires on " + TimeText(certificate.notAfter) + ": " +
                DaysLeftText(certificate.notAfter, time.now) + ".",
            {std::string("Have the authority issue a new certificate in time.") + kReplaceCopies}));
    }
    if (certificate.notBefore > time.now) {
        findings.push_back(
            MakeError("certificate-not-yet-valid", CodeOfFlag(MBEDTLS_X509_BADCERT_FUTURE),
                      "The certificate is not valid before " + TimeText(certificate.notBefore) +
                          "; this machine's clock says " + TimeText(time.now) + ".",
                      {"Wait until then, or set this machine's clock if it is wrong."}));
    }
    return findings;
}

CredentialFindings JudgeChain(const CertificateFacts& facts, const TrustFacts& trust) {
    const ResultCode code = CodeOfFlag(MBEDTLS_X509_BADCERT_NOT_TRUSTED);
    const std::string authority =
        trust.authority.certificate ? trust.authority.certificate->subject : std::string();
    switch (ChainOf(facts)) {
        case ChainState::Authority:
        case ChainState::NotChecked:
            return {};
        case ChainState::ForeignAuthority:
            return {MakeError(
                "foreign-authority", code,
                "The certificate names the built-in authority as its issuer, but is not signed by its key: another authority of the same name issued it, or the certificate is damaged.",
                {std::string(kAskForNew) +
                 " \"sealkeeper-inspect trust\" shows the fingerprint of the built-in authority."})};
        case ChainState::SelfSigned:
            return {MakeError(
                "self-signed", code,
                "The certificate was issued by itself, and not by the built-in authority '" +
                    authority + "'.",
                {kAskForNew})};
        case ChainState::OtherIssuer:
            return {MakeError(
                "other-issuer", code,
                "The certificate was issued by '" + facts.details->issuer +
                    "', and not by the built-in authority '" + authority +
                    "': it is a mod's, issued by a product's certificate, or another authority's. Generate refuses it, and verify cannot check a mod's own certificate that a product's certificate issued: both know the built-in authority alone.",
                {"Have the built-in authority itself issue the mod's certificate, with the product id as its name."})};
    }
    return {};
}

CredentialFinding Revoked(const CertificateFacts& facts) {
    std::string message =
        "The built-in revocation list has the certificate's serial " + facts.details->serial;
    if (facts.check->revokedOn) {
        message += ", revoked on " + TimeText(*facts.check->revokedOn);
    }
    return MakeError("certificate-revoked", CodeOfFlag(MBEDTLS_X509_BADCERT_REVOKED), message + ".",
                     {"Ask the authority why, and have it issue a new certificate for a new key."});
}

CredentialFinding WeakKey(const CertificateDetails& certificate) {
    // Also the minimum that the library demands of an authority.
    constexpr std::size_t kLeastRsaBits = 2048;
    const bool isAuthoritys = certificate.key.isRsa && certificate.key.bits >= kLeastRsaBits;
    return MakeError(
        "weak-key", CodeOfFlag(MBEDTLS_X509_BADCERT_BAD_KEY),
        isAuthoritys
            ? "The key of the authority is too short for the cryptographic library."
            : "The certificate's key (" + KeyText(certificate.key) +
                  ") is too short: the cryptographic library wants RSA keys of 2048 bits or more.",
        {"Make an RSA key of 2048 bits or more, and have a certificate issued for it."});
}

CredentialFindings JudgeStrength(const CertificateDetails& certificate, std::uint32_t flags) {
    CredentialFindings findings;
    if ((flags & MBEDTLS_X509_BADCERT_BAD_KEY) != 0) {
        findings.push_back(WeakKey(certificate));
    }
    if ((flags & (MBEDTLS_X509_BADCERT_BAD_MD | MBEDTLS_X509_BADCERT_BAD_PK)) != 0) {
        findings.push_back(
            MakeError("weak-digest", CodeOfFlag(MBEDTLS_X509_BADCERT_BAD_MD),
                      "The certificate is signed by " + certificate.signature +
                          ", which the cryptographic library does not trust.",
                      {"Have the authority issue a new certificate, signed with SHA-256."}));
    }
    if (!certificate.key.isRsa) {
        findings.push_back(MakeWarning(
            "key-not-rsa",
            "The certificate's key is no RSA key (" + KeyText(certificate.key) +
                "). The cryptographic library takes it, but sealkeeper is made for RSA keys.",
            {"Make an RSA key of 2048 bits or more, and have a certificate issued for it."}));
    }
    return findings;
}

}  // namespace

CredentialFindings JudgeCertificate(const CredentialFacts& facts, const JudgingTime& time) {
    const CertificateFacts& certificate = facts.certificate;
    CredentialFindings findings = JudgeForm(facts);
    if (!certificate.details) {
        return findings;
    }
    Append(findings, JudgeDates(*certificate.details, time));
    const std::uint32_t flags = certificate.check ? certificate.check->flags : 0;
    if ((flags & MBEDTLS_X509_BADCERT_REVOKED) != 0) {
        findings.push_back(Revoked(certificate));
    }
    if ((flags & MBEDTLS_X509_BADCERT_CN_MISMATCH) != 0) {
        findings.push_back(JudgeMismatch(*certificate.details, facts.productId));
    }
    Append(findings, JudgeChain(certificate, facts.trust));
    Append(findings, JudgeStrength(*certificate.details, flags));
    return findings;
}

}  // namespace sealkeeper
