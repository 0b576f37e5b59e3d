// Turns mbed TLS error numbers into result codes. Only the exact numbers match: an error that the
// library composes from one of its own and a lower-level ASN.1 error is a generic one.
#ifndef SEALKEEPER_RUNTIME_MBEDTLS_RESULT_H
#define SEALKEEPER_RUNTIME_MBEDTLS_RESULT_H

#include <cstdint>

#include "app/result_code.h"

namespace sealkeeper {

// The outcome of parsing a key file. Zero and positive numbers are `Ok`.
ResultCode MapKeyError(int libraryResult);

// The outcome of an X.509 or signature operation. `verificationFlags` tells a failed verification
// apart (RFC 5280 path validation); the first matching flag wins, in the order expired, revoked,
// name mismatch, revocation list not trusted, revocation list expired.
ResultCode MapX509Error(int libraryResult, std::uint32_t verificationFlags = 0);

}  // namespace sealkeeper

#endif
