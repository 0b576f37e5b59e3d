// Sums up in one word each how a certificate relates to the built-in authority and its list.
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
    // Issued by another certificate, such as a mod's or another authority's.
    OtherIssuer,
    // The trust material cannot be read, or the library failed to check.
    NotChecked,
};

enum class RevocationState {
    NotRevoked,
    Revoked,
    // Includes certificates of other issuers, which the list does not cover.
    NotChecked,
};

// Both require a certificate that could be read.
[[nodiscard]] ChainState ChainOf(const CertificateFacts& certificate);
[[nodiscard]] RevocationState RevocationOf(const CertificateFacts& certificate,
                                           const TrustFacts& trust);

}  // namespace sealkeeper

#endif
