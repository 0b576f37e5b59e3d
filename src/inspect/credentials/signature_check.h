// Checks whether a key signed a certificate or a revocation list. The library does that only as
// part of a chain.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_SIGNATURE_CHECK_H
#define SEALKEEPER_INSPECT_CREDENTIALS_SIGNATURE_CHECK_H

#include <mbedtls/pk.h>
#include <mbedtls/x509.h>

#include <optional>

namespace sealkeeper {

// A signed structure of RFC 5280, with the fields the library parsed.
struct SignedStructure {
    const mbedtls_x509_buf& whole;
    const mbedtls_x509_buf& signedPart;
    const mbedtls_x509_buf& algorithm;
};

// Whether the public key `key` verifies the signature. Empty if that is unknown, as for RSASSA-PSS.
[[nodiscard]] std::optional<bool> IsSignedBy(mbedtls_pk_context& key,
                                             const SignedStructure& structure);

}  // namespace sealkeeper

#endif
