// The signature of runtime.conf.
#ifndef SEALKEEPER_RUNTIME_SIGN_BUFFER_H
#define SEALKEEPER_RUNTIME_SIGN_BUFFER_H

#include <mbedtls/pk.h>

#include <cstddef>
#include <cstdint>

namespace sealkeeper {

// Signs the SHA-256 digest of the `length` bytes at `data` into `signature`, which has room for the
// file's signature area and may lie inside the data. Returns false, logged, for a missing argument,
// and false when signing fails. A random generator that cannot be seeded is, deliberately, no
// failure: true is returned with a signature length of 0, and readers reject such a file.
[[nodiscard]] bool SignBuffer(mbedtls_pk_context* privateKey, const std::uint8_t* data,
                              std::size_t length, std::uint8_t* signature,
                              std::uint64_t* signatureLength);

}  // namespace sealkeeper

#endif
