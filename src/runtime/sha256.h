// SHA-256 (FIPS 180-4) of mbed TLS.
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
    // The function that returns a result lost its suffix in mbed TLS 3.
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_sha256_ret(data.data(), data.size(), digest.data(), kNot224);
#else
    return mbedtls_sha256(data.data(), data.size(), digest.data(), kNot224);
#endif
}

// The same piece by piece: start, update as often as there are pieces, finish. Each returns 0 or
// the library's error.
[[nodiscard]] inline int StartSha256(mbedtls_sha256_context* context) {
    constexpr int kNot224 = 0;
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_sha256_starts_ret(context, kNot224);
#else
    return mbedtls_sha256_starts(context, kNot224);
#endif
}

[[nodiscard]] inline int UpdateSha256(mbedtls_sha256_context* context,
                                      std::span<const std::uint8_t> piece) {
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_sha256_update_ret(context, piece.data(), piece.size());
#else
    return mbedtls_sha256_update(context, piece.data(), piece.size());
#endif
}

[[nodiscard]] inline int FinishSha256(mbedtls_sha256_context* context, Sha256Digest& digest) {
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_sha256_finish_ret(context, digest.data());
#else
    return mbedtls_sha256_finish(context, digest.data());
#endif
}

}  // namespace sealkeeper

#endif
