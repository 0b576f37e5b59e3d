#include "inspect/credentials/list_issuer.h"

#include "inspect/credentials/signature_check.h"
#include "inspect/x509/certificate_details.h"
#include "runtime/certificate_trust.h"

namespace sealkeeper {
namespace {

bool IsNamedBy(const mbedtls_x509_crl& list, const mbedtls_x509_crt& issuer) {
    return IsSameEncoding(list.issuer_raw, issuer.subject_raw);
}

std::optional<bool> HasSignatureOf(const mbedtls_x509_crl& list, mbedtls_x509_crt& issuer) {
    return IsSignedBy(issuer.pk, {list.raw, list.tbs, list.sig_oid});
}

}  // namespace

ListIssuer IssuerOfList(RevocationList& list, Certificate& certificate,
                        const TrustMaterial& trust) {
    const mbedtls_x509_crl& parsed = *list.Get();
    const bool isCertificate = IsNamedBy(parsed, *certificate.Get());
    ListIssuer issuer;
    issuer.isRelated =
        isCertificate || IsSameEncoding(parsed.issuer_raw, certificate.Get()->issuer_raw);
    if (isCertificate) {
        issuer.isSigned = HasSignatureOf(parsed, *certificate.Get());
    }
    Certificate authority;
    // If the certificate has the authority's name, the key of either will do.
    if (!issuer.isSigned.value_or(false) && ParseCertificate(trust.authorityDer, authority) == 0 &&
        IsNamedBy(parsed, *authority.Get())) {
        issuer.isSigned = HasSignatureOf(parsed, *authority.Get());
    }
    return issuer;
}

}  // namespace sealkeeper
