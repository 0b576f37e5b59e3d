// Whether a key signed a certificate or a revocation list. The library checks that only as part of
// a chain.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_SIGNATURE_CHECK_H
#define SEALKEEPER_INSPECT_CREDENTIALS_SIGNATURE_CHECK_H

#include <mbedtls/pk.h>
#include <mbedtls/x509.h>

#include <optional>

namespace sealkeeper {

// A signed structure of RFC 5280, as the library parsed it.
struct SignedStructure {
    const mbedtls_x509_buf& whole;
    const mbedtls_x509_buf& signedPart;
    const mbedtls_x509_buf& algorithm;
};

// Whether `key`, a public one, is that of the signature; nothing where that is not known, as of a
// signature by RSASSA-PSS.
[[nodiscard]] std::optional<bool> IsSignedBy(mbedtls_pk_context& key,
                                             const SignedStructure& structure);

}  // namespace sealkeeper

#endif
