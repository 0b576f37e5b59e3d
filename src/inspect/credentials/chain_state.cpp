#include "inspect/credentials/chain_state.h"

#include <mbedtls/x509.h>

namespace sealkeeper {

ChainState ChainOf(const CertificateFacts& certificate) {
    if (!certificate.check) {
        return ChainState::NotChecked;
    }
    if ((certificate.check->flags & MBEDTLS_X509_BADCERT_NOT_TRUSTED) == 0) {
        return ChainState::Authority;
    }
    if (certificate.namesAuthority) {
        return ChainState::ForeignAuthority;
    }
    return certificate.isSelfSigned ? ChainState::SelfSigned : ChainState::OtherIssuer;
}

RevocationState RevocationOf(const CertificateFacts& certificate, const TrustFacts& trust) {
    if (!certificate.check) {
        return RevocationState::NotChecked;
    }
    if ((certificate.check->flags & MBEDTLS_X509_BADCERT_REVOKED) != 0) {
        return RevocationState::Revoked;
    }
    const bool isChecked = ChainOf(certificate) == ChainState::Authority &&
                           trust.revocationList.namesAuthority &&
                           (certificate.check->flags & MBEDTLS_X509_BADCRL_NOT_TRUSTED) == 0;
    return isChecked ? RevocationState::NotRevoked : RevocationState::NotChecked;
}

}  // namespace sealkeeper
