// The one place that knows how mbed TLS 2.28 and 3.6 differ: the one-shot SHA-256, the random
// generator that 3.6 wants for private keys, and the size of the signature buffer.
#ifndef SEALKEEPER_RUNTIME_MBEDTLS_COMPAT_H
#define SEALKEEPER_RUNTIME_MBEDTLS_COMPAT_H

#include <mbedtls/ctr_drbg.h>
#include <mbedtls/md.h>
#include <mbedtls/pk.h>
#include <mbedtls/sha256.h>
#include <mbedtls/version.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "runtime/random_generator.h"

#if MBEDTLS_VERSION_NUMBER < 0x021C0000 || MBEDTLS_VERSION_NUMBER >= 0x04000000
#error "mbed TLS 2.28 or 3.x is required"
#endif

namespace sealkeeper {

inline constexpr std::size_t kSha256Bytes = 32;
using Sha256Digest = std::array<std::uint8_t, kSha256Bytes>;

// SHA-256 (FIPS 180-4) of `data`. Returns 0 or the library's error.
[[nodiscard]] inline int ComputeSha256(std::span<const std::uint8_t> data, Sha256Digest& digest) {
    constexpr int kNot224 = 0;
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_sha256_ret(data.data(), data.size(), digest.data(), kNot224);
#else
    return mbedtls_sha256(data.data(), data.size(), digest.data(), kNot224);
#endif
}

// Parses the private key file at `path`, without a password, into `key`. Returns 0 or the library's
// error.
[[nodiscard]] inline int ParsePrivateKeyFile(mbedtls_pk_context* key, const char* path) {
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_pk_parse_keyfile(key, path, nullptr);
#else
    RandomGenerator random;
    if (!random.Seed()) {
        return MBEDTLS_ERR_CTR_DRBG_ENTROPY_SOURCE_FAILED;
    }
    return mbedtls_pk_parse_keyfile(key, path, nullptr, mbedtls_ctr_drbg_random, random.Get());
#endif
}

// Returns 0 when the two keys form a pair, else the library's error.
[[nodiscard]] inline int CheckKeyPair(const mbedtls_pk_context* publicKey,
                                      const mbedtls_pk_context* privateKey) {
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_pk_check_pair(publicKey, privateKey);
#else
    RandomGenerator random;
    if (!random.Seed()) {
        return MBEDTLS_ERR_CTR_DRBG_ENTROPY_SOURCE_FAILED;
    }
    return mbedtls_pk_check_pair(publicKey, privateKey, mbedtls_ctr_drbg_random, random.Get());
#endif
}

// Signs `digest`. `signature` must have room for the key's size, which is checked. Returns 0 or the
// library's error; `signatureBytes` is set on success.
[[nodiscard]] inline int SignSha256Digest(mbedtls_pk_context* key, const Sha256Digest& digest,
                                          std::span<std::uint8_t> signature,
                                          std::size_t& signatureBytes, RandomGenerator& random) {
    if (mbedtls_pk_get_len(key) > signature.size()) {
        return MBEDTLS_ERR_PK_BAD_INPUT_DATA;
    }
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_pk_sign(key, MBEDTLS_MD_SHA256, digest.data(), digest.size(), signature.data(),
                           &signatureBytes, mbedtls_ctr_drbg_random, random.Get());
#else
    return mbedtls_pk_sign(key, MBEDTLS_MD_SHA256, digest.data(), digest.size(), signature.data(),
                           signature.size(), &signatureBytes, mbedtls_ctr_drbg_random,
                           random.Get());
#endif
}

}  // namespace sealkeeper

#endif
