// Maps mbed TLS error numbers to result codes. Only exact numbers match: a high-level error
// combined with a lower-level one, such as an ASN.1 error, maps to the generic code.
#ifndef SEALKEEPER_RUNTIME_MBEDTLS_RESULT_H
#define SEALKEEPER_RUNTIME_MBEDTLS_RESULT_H

#include <cstdint>

#include "app/result_code.h"

namespace sealkeeper {

// The outcome of parsing a key file. Zero and positive numbers are `Ok`.
ResultCode MapKeyError(int libraryResult);

// The outcome of an X.509 or signature operation. `verificationFlags` tells why a verification (RFC
// 5280 path validation) failed; the first matching flag wins, in the order expired, revoked, name
// mismatch, revocation list not trusted, revocation list expired.
ResultCode MapX509Error(int libraryResult, std::uint32_t verificationFlags = 0);

}  // namespace sealkeeper

#endif
