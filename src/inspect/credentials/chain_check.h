// What the cryptographic library says of a certificate under an authority and its revocation list.
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
    // MBEDTLS_X509_BADCERT_... and MBEDTLS_X509_BADCRL_... of the certificate, not of the
    // authority. It may have none and yet not be trusted, as where the authority has expired.
    std::uint32_t flags = 0;
    // When it was revoked, as the list says; nothing where it was not, or where no time is said.
    std::optional<UtcTime> revokedOn = {};
};

// Checks the parsed `certificate` against `trust` with `name` as the expected name, by the system's
// clock. Nothing where the authority or its list cannot be parsed, or where the library fails to
// check, as of a chain that is too long for it: the certificate is neither good nor bad then.
[[nodiscard]] std::optional<ChainCheck> CheckChain(const TrustMaterial& trust,
                                                   const std::string& name,
                                                   Certificate& certificate);

}  // namespace sealkeeper

#endif
