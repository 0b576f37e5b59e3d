// Functions of mbed TLS that fail on demand.
#include <mbedtls/ctr_drbg.h>
#include <mbedtls/md.h>
#include <mbedtls/pk.h>
#include <mbedtls/sha256.h>
#include <mbedtls/version.h>
#include <mbedtls/x509_crt.h>

#include <cstddef>
#include <cstdint>

#include "fault/interposition.h"

// In mbed TLS 3 the functions that return a result lost their suffix.
#if MBEDTLS_VERSION_MAJOR < 3
#define SEALKEEPER_RESULT(name) name##_ret
#define SEALKEEPER_RESULT_TEXT(name) #name "_ret"
#else
#define SEALKEEPER_RESULT(name) name
#define SEALKEEPER_RESULT_TEXT(name) #name
#endif

using sealkeeper::test::Call;
using sealkeeper::test::FaultValue;
using sealkeeper::test::Real;
using sealkeeper::test::Strikes;

extern "C" {

// Fails after parsing; the parsed certificate stays.
int mbedtls_x509_crt_parse_der(mbedtls_x509_crt* chain, const unsigned char* bytes, size_t size) {
    const int result = Real<int(mbedtls_x509_crt*, const unsigned char*, size_t)>(
        "mbedtls_x509_crt_parse_der")(chain, bytes, size);
    return Strikes(Call::ParseCertificate) ? MBEDTLS_ERR_X509_ALLOC_FAILED : result;
}

int mbedtls_x509_crt_verify(mbedtls_x509_crt* certificate, mbedtls_x509_crt* authority,
                            mbedtls_x509_crl* revoked, const char* name, uint32_t* flags,
                            int (*callback)(void*, mbedtls_x509_crt*, int, uint32_t*),
                            void* argument) {
    using Verify = int(mbedtls_x509_crt*, mbedtls_x509_crt*, mbedtls_x509_crl*, const char*,
                       uint32_t*, int (*)(void*, mbedtls_x509_crt*, int, uint32_t*), void*);
    if (Strikes(Call::VerifyChain)) {
        *flags = MBEDTLS_X509_BADCERT_NOT_TRUSTED;
        return FaultValue(Call::VerifyChain);
    }
    return Real<Verify>("mbedtls_x509_crt_verify")(certificate, authority, revoked, name, flags,
                                                   callback, argument);
}

// Fails after signing; the signature and its length stay.
#if MBEDTLS_VERSION_MAJOR < 3
int mbedtls_pk_sign(mbedtls_pk_context* key, mbedtls_md_type_t type, const unsigned char* digest,
                    size_t digestSize, unsigned char* signature, size_t* signatureSize,
                    int (*random)(void*, unsigned char*, size_t), void* state) {
    using Sign = int(mbedtls_pk_context*, mbedtls_md_type_t, const unsigned char*, size_t,
                     unsigned char*, size_t*, int (*)(void*, unsigned char*, size_t), void*);
    const int result = Real<Sign>("mbedtls_pk_sign")(key, type, digest, digestSize, signature,
                                                     signatureSize, random, state);
#else
int mbedtls_pk_sign(mbedtls_pk_context* key, mbedtls_md_type_t type, const unsigned char* digest,
                    size_t digestSize, unsigned char* signature, size_t roomSize,
                    size_t* signatureSize, int (*random)(void*, unsigned char*, size_t),
                    void* state) {
    using Sign =
        int(mbedtls_pk_context*, mbedtls_md_type_t, const unsigned char*, size_t, unsigned char*,
            size_t, size_t*, int (*)(void*, unsigned char*, size_t), void*);
    const int result = Real<Sign>("mbedtls_pk_sign")(key, type, digest, digestSize, signature,
                                                     roomSize, signatureSize, random, state);
#endif
    return Strikes(Call::Sign) ? MBEDTLS_ERR_PK_ALLOC_FAILED : result;
}

int mbedtls_ctr_drbg_seed(mbedtls_ctr_drbg_context* context,
                          int (*entropy)(void*, unsigned char*, size_t), void* source,
                          const unsigned char* custom, size_t length) {
    using Seed = int(mbedtls_ctr_drbg_context*, int (*)(void*, unsigned char*, size_t), void*,
                     const unsigned char*, size_t);
    if (Strikes(Call::SeedGenerator)) {
        return MBEDTLS_ERR_CTR_DRBG_ENTROPY_SOURCE_FAILED;
    }
    return Real<Seed>("mbedtls_ctr_drbg_seed")(context, entropy, source, custom, length);
}

int SEALKEEPER_RESULT(mbedtls_sha256)(const unsigned char* data, size_t size, unsigned char* digest,
                                      int is224) {
    const int result = Real<int(const unsigned char*, size_t, unsigned char*, int)>(
        SEALKEEPER_RESULT_TEXT(mbedtls_sha256))(data, size, digest, is224);
    return Strikes(Call::Sha256) ? MBEDTLS_ERR_SHA256_BAD_INPUT_DATA : result;
}

}  // extern "C"
