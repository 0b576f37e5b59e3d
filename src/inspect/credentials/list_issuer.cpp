#include "inspect/credentials/list_issuer.h"

#include "inspect/credentials/signature_check.h"
#include "inspect/x509/certificate_details.h"
#include "runtime/certificate_trust.h"

namespace sealkeeper {
namespace {

// False also if the signature cannot be checked.
bool Issued(mbedtls_x509_crt& issuer, const mbedtls_x509_crt& certificate) {
    return IsSameEncoding(certificate.issuer_raw, issuer.subject_raw) &&
           IsSignedBy(issuer.pk, {certificate.raw, certificate.tbs, certificate.sig_oid})
               .value_or(false);
}

std::optional<bool> HasSignatureOf(const mbedtls_x509_crl& list, mbedtls_x509_crt& issuer) {
    return IsSignedBy(issuer.pk, {list.raw, list.tbs, list.sig_oid});
}

// Whether the key of the issuer of `certificate` signed the list. Empty also if that key is not
// known: other certificates may have the same name.
std::optional<bool> IsSignedByIssuer(const mbedtls_x509_crl& list, mbedtls_x509_crt& certificate,
                                     const TrustMaterial& trust) {
    Certificate authority;
    if (ParseCertificate(trust.authorityDer, authority) == 0 &&
        Issued(*authority.Get(), certificate)) {
        return HasSignatureOf(list, *authority.Get());
    }
    return Issued(certificate, certificate) ? HasSignatureOf(list, certificate) : std::nullopt;
}

}  // namespace

ListIssuer IssuerOfList(RevocationList& list, Certificate& certificate,
                        const TrustMaterial& trust) {
    const mbedtls_x509_crl& parsed = *list.Get();
    mbedtls_x509_crt& own = *certificate.Get();
    const bool namesIssuer = IsSameEncoding(parsed.issuer_raw, own.issuer_raw);
    const bool namesCertificate = IsSameEncoding(parsed.issuer_raw, own.subject_raw);
    ListIssuer issuer;
    issuer.isRelated = namesCertificate || namesIssuer;
    if (namesCertificate) {
        issuer.isSigned = HasSignatureOf(parsed, own);
    }
    // If the certificate has its issuer's name, the key of either will do.
    if (namesIssuer && !issuer.isSigned.value_or(false)) {
        issuer.isSigned = IsSignedByIssuer(parsed, own, trust);
    }
    return issuer;
}

}  // namespace sealkeeper
