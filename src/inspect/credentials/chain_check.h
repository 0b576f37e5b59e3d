// The library's verdict on a certificate, given an authority and its revocation list.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CHAIN_CHECK_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CHAIN_CHECK_H

#include <cstdint>
#include <optional>
#include <string>

#include "inspect/x509/utc_time.h"
#include "runtime/mbedtls_contexts.h"
#include "runtime/trust_material.h"

namespace sealkeeper {

struct ChainCheck {
    // Whether the library trusts the certificate.
    bool isTrusted = false;
    // The certificate's own MBEDTLS_X509_BADCERT_... and MBEDTLS_X509_BADCRL_... flags, without the
    // authority's. It may have none and still not be trusted, for example if the authority has
    // expired.
    std::uint32_t flags = 0;
    // The revocation date in the list. Empty if the certificate is not revoked, or the list has no
    // date for it.
    std::optional<UtcTime> revokedOn = {};
};

// Checks the parsed `certificate` against `trust`, with `name` as the expected name, at the current
// time. Empty if there is no verdict: the authority or its list cannot be parsed, or the check
// itself fails, for example because the chain is too long.
[[nodiscard]] std::optional<ChainCheck> CheckChain(const TrustMaterial& trust,
                                                   const std::string& name,
                                                   Certificate& certificate);

}  // namespace sealkeeper

#endif
