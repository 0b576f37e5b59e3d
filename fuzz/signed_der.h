// The outer structure that certificates and revocation lists have in common (RFC 5280, 4.1 and
// 5.1), taken apart without the library that the program trusts with it.
#ifndef SEALKEEPER_FUZZ_SIGNED_DER_H
#define SEALKEEPER_FUZZ_SIGNED_DER_H

#include <mbedtls/pk.h>

#include <optional>

#include "fuzzer.h"

namespace sealkeeper::fuzz {

struct SignedDer {
    // The element that is signed, its tag and length included.
    ByteView toBeSigned;
    ByteView signature;
};

// Nothing when `bytes` do not begin with such a structure. What is past its end is not looked at.
[[nodiscard]] std::optional<SignedDer> TakeApart(ByteView bytes);

// Whether `bytes` carry the signature of `key`, over SHA-256, of exactly the bytes that are to be
// signed in them.
[[nodiscard]] bool IsSignedBy(ByteView bytes, const mbedtls_pk_context& key);

}  // namespace sealkeeper::fuzz

#endif
