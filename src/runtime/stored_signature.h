// The signature as the two signed file formats store it: an area of fixed size and the length of
// what is used of it.
#ifndef SEALKEEPER_RUNTIME_STORED_SIGNATURE_H
#define SEALKEEPER_RUNTIME_STORED_SIGNATURE_H

#include <mbedtls/pk.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "runtime/signed_file_format.h"

namespace sealkeeper {

struct StoredSignature {
    std::array<std::uint8_t, signed_file::kSignatureAreaBytes> area{};
    // As stored: may be anything.
    std::uint32_t lengthBytes = 0;
};

// What came of making a signature.
struct SigningOutcome {
    // Whether the random generator could be seeded; nothing was signed otherwise.
    bool isSeeded = false;
    // 0 or the library's error; 0 where the generator could not be seeded.
    int result = 0;
    // How much of its area the signature takes; 0 where none was made.
    std::size_t lengthBytes = 0;
};

// Signs the SHA-256 digest of `data` with a freshly seeded random generator, with RSASSA-PKCS1-v1_5
// (RFC 8017) where the key is an RSA key. `area` may lie inside the data, which is hashed first;
// what the signature leaves of it is zero. Logs nothing.
[[nodiscard]] SigningOutcome MakeSignature(
    mbedtls_pk_context* privateKey, std::span<const std::uint8_t> data,
    std::span<std::uint8_t, signed_file::kSignatureAreaBytes> area);

// Takes the signature out of `file` and leaves zeros in its area and its length, as they were when
// the file was signed. Both lie within `file`, the length right behind the area.
[[nodiscard]] StoredSignature TakeSignature(std::span<std::uint8_t> file, std::size_t areaOffset);

// Checks `signature` over the SHA-256 digest of `signedBytes`, with RSASSA-PKCS1-v1_5 (RFC 8017)
// where the key is an RSA key. Returns 0 or the library's error.
[[nodiscard]] int VerifySignature(mbedtls_pk_context* publicKey,
                                  std::span<const std::uint8_t> signedBytes,
                                  const StoredSignature& signature);

}  // namespace sealkeeper

#endif
