// Parses the outer structure that certificates and revocation lists share (RFC 5280, 4.1 and 5.1),
// independently of the library that the program uses for it.
#ifndef SEALKEEPER_FUZZ_SIGNED_DER_H
#define SEALKEEPER_FUZZ_SIGNED_DER_H

#include <mbedtls/pk.h>

#include <optional>

#include "fuzzer.h"

namespace sealkeeper::fuzz {

struct SignedDer {
    // The element that is signed, with its tag and length.
    ByteView toBeSigned;
    ByteView signature;
};

// Nothing when `bytes` do not begin with such a structure. Bytes past its end are ignored.
[[nodiscard]] std::optional<SignedDer> TakeApart(ByteView bytes);

// Whether `bytes` contain a valid signature by `key`, with SHA-256, of exactly their signed part.
[[nodiscard]] bool IsSignedBy(ByteView bytes, const mbedtls_pk_context& key);

}  // namespace sealkeeper::fuzz

#endif
