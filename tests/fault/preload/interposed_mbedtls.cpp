// The functions of mbed TLS that the program calls and that can fail, for versions 2.28 and 3.x.
#include <mbedtls/ctr_drbg.h>
#include <mbedtls/entropy.h>
#include <mbedtls/md.h>
#include <mbedtls/pk.h>
#include <mbedtls/sha256.h>
#include <mbedtls/version.h>
#include <mbedtls/x509_crl.h>
#include <mbedtls/x509_crt.h>

#include <cstddef>
#include <cstdint>

#include "fault/preload/interposed.h"

using sealkeeper::fault::Interposed;

extern "C" {

int mbedtls_entropy_func(void* source, unsigned char* output, std::size_t length) {
    static constinit Interposed<int(void*, unsigned char*, std::size_t)> function(
        "mbedtls_entropy_func");
    return function.OrReturn({}, source, output, length);
}

int mbedtls_ctr_drbg_seed(mbedtls_ctr_drbg_context* context,
                          int (*entropy)(void*, unsigned char*, std::size_t), void* source,
                          const unsigned char* custom, std::size_t length) {
    static constinit Interposed<int(mbedtls_ctr_drbg_context*,
                                    int (*)(void*, unsigned char*, std::size_t), void*,
                                    const unsigned char*, std::size_t)>
        function("mbedtls_ctr_drbg_seed");
    return function.OrReturn({}, context, entropy, source, custom, length);
}

int mbedtls_ctr_drbg_random(void* context, unsigned char* output, std::size_t length) {
    static constinit Interposed<int(void*, unsigned char*, std::size_t)> function(
        "mbedtls_ctr_drbg_random");
    return function.OrReturn({}, context, output, length);
}

int mbedtls_md(const mbedtls_md_info_t* kind, const unsigned char* input, std::size_t length,
               unsigned char* output) {
    static constinit Interposed<int(const mbedtls_md_info_t*, const unsigned char*, std::size_t,
                                    unsigned char*)>
        function("mbedtls_md");
    return function.OrReturn({}, kind, input, length, output);
}

int mbedtls_x509_crt_parse_der(mbedtls_x509_crt* certificate, const unsigned char* data,
                               std::size_t size) {
    static constinit Interposed<int(mbedtls_x509_crt*, const unsigned char*, std::size_t)> function(
        "mbedtls_x509_crt_parse_der");
    return function.OrReturn({}, certificate, data, size);
}

int mbedtls_x509_crl_parse_der(mbedtls_x509_crl* list, const unsigned char* data,
                               std::size_t size) {
    static constinit Interposed<int(mbedtls_x509_crl*, const unsigned char*, std::size_t)> function(
        "mbedtls_x509_crl_parse_der");
    return function.OrReturn({}, list, data, size);
}

// A verification that cannot be completed sets every flag.
int mbedtls_x509_crt_verify(mbedtls_x509_crt* subject, mbedtls_x509_crt* trusted,
                            mbedtls_x509_crl* revoked, const char* name, std::uint32_t* flags,
                            int (*callback)(void*, mbedtls_x509_crt*, int, std::uint32_t*),
                            void* context) {
    static constinit Interposed<int(mbedtls_x509_crt*, mbedtls_x509_crt*, mbedtls_x509_crl*,
                                    const char*, std::uint32_t*,
                                    int (*)(void*, mbedtls_x509_crt*, int, std::uint32_t*), void*)>
        function("mbedtls_x509_crt_verify");
    if (const auto fault = function.Next()) {
        *flags = UINT32_MAX;
        return fault->value;
    }
    return function.Real(subject, trusted, revoked, name, flags, callback, context);
}

int mbedtls_pk_verify(mbedtls_pk_context* key, mbedtls_md_type_t digestType,
                      const unsigned char* digest, std::size_t digestSize,
                      const unsigned char* signature, std::size_t signatureSize) {
    static constinit Interposed<int(mbedtls_pk_context*, mbedtls_md_type_t, const unsigned char*,
                                    std::size_t, const unsigned char*, std::size_t)>
        function("mbedtls_pk_verify");
    return function.OrReturn({}, key, digestType, digest, digestSize, signature, signatureSize);
}

#if MBEDTLS_VERSION_MAJOR < 3

int mbedtls_sha256_ret(const unsigned char* data, std::size_t size, unsigned char* digest,
                       int is224) {
    static constinit Interposed<int(const unsigned char*, std::size_t, unsigned char*, int)>
        function("mbedtls_sha256_ret");
    return function.OrReturn({}, data, size, digest, is224);
}

int mbedtls_pk_parse_keyfile(mbedtls_pk_context* key, const char* path, const char* password) {
    static constinit Interposed<int(mbedtls_pk_context*, const char*, const char*)> function(
        "mbedtls_pk_parse_keyfile");
    return function.OrReturn({path}, key, path, password);
}

int mbedtls_pk_check_pair(const mbedtls_pk_context* publicKey,
                          const mbedtls_pk_context* privateKey) {
    static constinit Interposed<int(const mbedtls_pk_context*, const mbedtls_pk_context*)> function(
        "mbedtls_pk_check_pair");
    return function.OrReturn({}, publicKey, privateKey);
}

int mbedtls_pk_sign(mbedtls_pk_context* key, mbedtls_md_type_t digestType,
                    const unsigned char* digest, std::size_t digestSize, unsigned char* signature,
                    std::size_t* signatureSize, int (*random)(void*, unsigned char*, std::size_t),
                    void* context) {
    static constinit Interposed<int(mbedtls_pk_context*, mbedtls_md_type_t, const unsigned char*,
                                    std::size_t, unsigned char*, std::size_t*,
                                    int (*)(void*, unsigned char*, std::size_t), void*)>
        function("mbedtls_pk_sign");
    return function.OrReturn({}, key, digestType, digest, digestSize, signature, signatureSize,
                             random, context);
}

#else

int mbedtls_sha256(const unsigned char* data, std::size_t size, unsigned char* digest, int is224) {
    static constinit Interposed<int(const unsigned char*, std::size_t, unsigned char*, int)>
        function("mbedtls_sha256");
    return function.OrReturn({}, data, size, digest, is224);
}

int mbedtls_pk_parse_keyfile(mbedtls_pk_context* key, const char* path, const char* password,
                             int (*random)(void*, unsigned char*, std::size_t), void* context) {
    static constinit Interposed<int(mbedtls_pk_context*, const char*, const char*,
                                    int (*)(void*, unsigned char*, std::size_t), void*)>
        function("mbedtls_pk_parse_keyfile");
    return function.OrReturn({path}, key, path, password, random, context);
}

int mbedtls_pk_check_pair(const mbedtls_pk_context* publicKey, const mbedtls_pk_context* privateKey,
                          int (*random)(void*, unsigned char*, std::size_t), void* context) {
    static constinit Interposed<int(const mbedtls_pk_context*, const mbedtls_pk_context*,
                                    int (*)(void*, unsigned char*, std::size_t), void*)>
        function("mbedtls_pk_check_pair");
    return function.OrReturn({}, publicKey, privateKey, random, context);
}

int mbedtls_pk_sign(mbedtls_pk_context* key, mbedtls_md_type_t digestType,
                    const unsigned char* digest, std::size_t digestSize, unsigned char* signature,
                    std::size_t signatureRoom, std::size_t* signatureSize,
                    int (*random)(void*, unsigned char*, std::size_t), void* context) {
    static constinit Interposed<int(mbedtls_pk_context*, mbedtls_md_type_t, const unsigned char*,
                                    std::size_t, unsigned char*, std::size_t, std::size_t*,
                                    int (*)(void*, unsigned char*, std::size_t), void*)>
        function("mbedtls_pk_sign");
    return function.OrReturn({}, key, digestType, digest, digestSize, signature, signatureRoom,
                             signatureSize, random, context);
}

#endif

}  // extern "C"
