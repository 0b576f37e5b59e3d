// SHA-256 (FIPS 180-4) from mbed TLS, for what is signed and for chunks that are read again. The
// first reading of a chunk is hashed by our own kernels; see catalogue/hashing/.
#ifndef SEALKEEPER_RUNTIME_SHA256_H
#define SEALKEEPER_RUNTIME_SHA256_H

#include <mbedtls/sha256.h>
#include <mbedtls/version.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace sealkeeper {

inline constexpr std::size_t kSha256Bytes = 32;
using Sha256Digest = std::array<std::uint8_t, kSha256Bytes>;

// The digest of `data`. Returns 0 or the library's error.
[[nodiscard]] inline int ComputeSha256(std::span<const std::uint8_t> data, Sha256Digest& digest) {
    constexpr int kNot224 = 0;
    // mbed TLS 3 dropped the suffix of the function that returns a result.
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_sha256_ret(data.data(), data.size(), digest.data(), kNot224);
#else
    return mbedtls_sha256(data.data(), data.size(), digest.data(), kNot224);
#endif
}

}  // namespace sealkeeper

#endif
