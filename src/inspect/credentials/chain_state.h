// How a certificate stands to the built-in authority and its revocation list, in one word
// each.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CHAIN_STATE_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CHAIN_STATE_H

#include "inspect/credentials/credential_facts.h"

namespace sealkeeper {

enum class ChainState {
    // Issued and signed by the built-in authority.
    Authority,
    // Names the authority as its issuer, but is not signed by its key.
    ForeignAuthority,
    SelfSigned,
    // Issued by another certificate: a mod's, or another authority's.
    OtherIssuer,
    // What is built in cannot be read, or the library failed to check the certificate.
    NotChecked,
};

enum class RevocationState {
    NotRevoked,
    Revoked,
    // Also of a certificate that the authority did not issue: the list tells nothing of it.
    NotChecked,
};

// Both of a certificate that could be read.
[[nodiscard]] ChainState ChainOf(const CertificateFacts& certificate);
[[nodiscard]] RevocationState RevocationOf(const CertificateFacts& certificate,
                                           const TrustFacts& trust);

}  // namespace sealkeeper

#endif
