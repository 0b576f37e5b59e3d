// The signature as the two signed file formats store it: an area of fixed size, and how many of its
// bytes are used.
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
    // As stored, unchecked: may be larger than the area.
    std::uint32_t lengthBytes = 0;
};

// The outcome of making a signature.
struct SigningOutcome {
    // Whether the random generator could be seeded. If not, nothing was signed.
    bool isSeeded = false;
    // 0 or the library's error; 0 also when the generator could not be seeded.
    int result = 0;
    // How many bytes of its area the signature takes; 0 when none was made.
    std::size_t lengthBytes = 0;
};

// Signs the SHA-256 digest of `data` with a freshly seeded random generator, with RSASSA-PKCS1-v1_5
// (RFC 8017) if the key is an RSA key. `area` may lie inside the data, which is hashed first. On
// success the rest of `area` is zero. Logs nothing.
[[nodiscard]] SigningOutcome MakeSignature(
    mbedtls_pk_context* privateKey, std::span<const std::uint8_t> data,
    std::span<std::uint8_t, signed_file::kSignatureAreaBytes> area);

// Takes the signature out of `file` and sets its area and length to zero, as they were when the
// file was signed. Both must lie within `file`, the length right after the area.
[[nodiscard]] StoredSignature TakeSignature(std::span<std::uint8_t> file, std::size_t areaOffset);

// Checks `signature` over the SHA-256 digest of `signedBytes`, with RSASSA-PKCS1-v1_5 (RFC 8017) if
// the key is an RSA key. Returns 0 or the library's error. A stored length above that of the area
// is such an error.
[[nodiscard]] int VerifySignature(mbedtls_pk_context* publicKey,
                                  std::span<const std::uint8_t> signedBytes,
                                  const StoredSignature& signature);

}  // namespace sealkeeper

#endif
