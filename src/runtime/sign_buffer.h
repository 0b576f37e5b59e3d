// The signature of runtime.conf.
#ifndef SEALKEEPER_RUNTIME_SIGN_BUFFER_H
#define SEALKEEPER_RUNTIME_SIGN_BUFFER_H

#include <mbedtls/pk.h>

#include <cstddef>
#include <cstdint>

namespace sealkeeper {

// Signs the SHA-256 digest of the `length` bytes at `data` into `signature`, which has room for the
// signature area of a file and may lie inside the data. Returns false, logged, when an argument is
// null, and false when signing fails. Deliberate quirk: when the random generator cannot be seeded,
// returns true with a signature length of 0. Readers reject such a file.
[[nodiscard]] bool SignBuffer(mbedtls_pk_context* privateKey, const std::uint8_t* data,
                              std::size_t length, std::uint8_t* signature,
                              std::uint64_t* signatureLength);

}  // namespace sealkeeper

#endif
