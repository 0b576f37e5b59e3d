// The differences between mbed TLS 2.28 and 3.6, in one place: the random generator that 3.6 needs
// with private keys, the size of the signature buffer, a private field, and (in sha256.h) the name
// of the one-shot SHA-256.
#ifndef SEALKEEPER_RUNTIME_MBEDTLS_COMPAT_H
#define SEALKEEPER_RUNTIME_MBEDTLS_COMPAT_H

#include <mbedtls/ctr_drbg.h>
#include <mbedtls/md.h>
#include <mbedtls/pk.h>
#include <mbedtls/version.h>
#include <mbedtls/x509_crt.h>

#if defined(MBEDTLS_USE_PSA_CRYPTO)
#include <psa/crypto.h>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "runtime/random_generator.h"
#include "runtime/sha256.h"

#if MBEDTLS_VERSION_NUMBER < 0x021C0000 || MBEDTLS_VERSION_NUMBER >= 0x04000000
#error "mbed TLS 2.28 or 3.x is required"
#endif

namespace sealkeeper {

// Initialises the library. Call once, before anything else of it is used. Only a library whose
// X.509 and key functions go through PSA (MBEDTLS_USE_PSA_CRYPTO) needs it. False on failure.
[[nodiscard]] inline bool InitialiseMbedTls() {
#if defined(MBEDTLS_USE_PSA_CRYPTO)
    return psa_crypto_init() == PSA_SUCCESS;
#else
    return true;
#endif
}

#if MBEDTLS_VERSION_MAJOR >= 3
// Random numbers for functions that require a generator but use it only for elliptic-curve keys.
// The generator is seeded on use, so that RSA keys need no entropy here, as with 2.28. Returns 0 or
// the library's error.
[[nodiscard]] inline int DrawFreshlySeeded(void* /*state*/, unsigned char* output,
                                           std::size_t sizeBytes) {
    RandomGenerator random;
    if (!random.Seed()) {
        return MBEDTLS_ERR_CTR_DRBG_ENTROPY_SOURCE_FAILED;
    }
    return mbedtls_ctr_drbg_random(random.Get(), output, sizeBytes);
}
#endif

// Whether `certificate` may issue others, by its basic constraints (RFC 5280, 4.2.1.9). X.509
// versions before 3 have no such extension, and may issue.
[[nodiscard]] inline bool MayIssueCertificates(const mbedtls_x509_crt& certificate) {
    constexpr int kVersionWithExtensions = 3;
#if MBEDTLS_VERSION_MAJOR < 3
    const int isAuthority = certificate.ca_istrue;
#else
    const int isAuthority = certificate.MBEDTLS_PRIVATE(ca_istrue);
#endif
    return certificate.version < kVersionWithExtensions || isAuthority != 0;
}

// Parses the private key file at `path`, without a password, into `key`. Returns 0 or the library's
// error.
[[nodiscard]] inline int ParsePrivateKeyFile(mbedtls_pk_context* key, const char* path) {
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_pk_parse_keyfile(key, path, nullptr);
#else
    return mbedtls_pk_parse_keyfile(key, path, nullptr, DrawFreshlySeeded, nullptr);
#endif
}

// Returns 0 when the two keys form a pair, else the library's error.
[[nodiscard]] inline int CheckKeyPair(const mbedtls_pk_context* publicKey,
                                      const mbedtls_pk_context* privateKey) {
#if MBEDTLS_VERSION_MAJOR < 3
    return mbedtls_pk_check_pair(publicKey, privateKey);
#else
    return mbedtls_pk_check_pair(publicKey, privateKey, DrawFreshlySeeded, nullptr);
#endif
}

// Signs `digest`. Fails when `signature` is smaller than the key. Returns 0 or the library's error;
// on success `signatureBytes` is set and the rest of `signature` is zero.
[[nodiscard]] inline int SignSha256Digest(mbedtls_pk_context* key, const Sha256Digest& digest,
                                          std::span<std::uint8_t> signature,
                                          std::size_t& signatureBytes, RandomGenerator& random) {
    if (mbedtls_pk_get_len(key) > signature.size()) {
        return MBEDTLS_ERR_PK_BAD_INPUT_DATA;
    }
#if MBEDTLS_VERSION_MAJOR < 3
    const int result =
        mbedtls_pk_sign(key, MBEDTLS_MD_SHA256, digest.data(), digest.size(), signature.data(),
                        &signatureBytes, mbedtls_ctr_drbg_random, random.Get());
#else
    const int result =
        mbedtls_pk_sign(key, MBEDTLS_MD_SHA256, digest.data(), digest.size(), signature.data(),
                        signature.size(), &signatureBytes, mbedtls_ctr_drbg_random, random.Get());
#endif
    if (result == 0) {
        // PSA fills the rest of the buffer with a pattern.
        std::fill(signature.begin() + static_cast<std::ptrdiff_t>(signatureBytes), signature.end(),
                  std::uint8_t{0});
    }
    return result;
}

}  // namespace sealkeeper

#endif
