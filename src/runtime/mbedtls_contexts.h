// Owners of mbed TLS contexts, initialised on construction and freed on destruction. Neither copied
// nor moved, because the library keeps pointers into them.
#ifndef SEALKEEPER_RUNTIME_MBEDTLS_CONTEXTS_H
#define SEALKEEPER_RUNTIME_MBEDTLS_CONTEXTS_H

#include <mbedtls/ctr_drbg.h>
#include <mbedtls/entropy.h>
#include <mbedtls/pk.h>
#include <mbedtls/x509_crl.h>
#include <mbedtls/x509_crt.h>

namespace sealkeeper {

template <typename Context, auto kInit, auto kFree>
class MbedTlsContext {
  public:
    MbedTlsContext() { kInit(&context_); }
    MbedTlsContext(const MbedTlsContext&) = delete;
    MbedTlsContext& operator=(const MbedTlsContext&) = delete;
    ~MbedTlsContext() { kFree(&context_); }

    // Back to the freshly initialised state.
    void Reset() {
        kFree(&context_);
        kInit(&context_);
    }

    [[nodiscard]] Context* Get() { return &context_; }
    [[nodiscard]] const Context* Get() const { return &context_; }

  private:
    Context context_{};
};

using EntropySource =
    MbedTlsContext<mbedtls_entropy_context, mbedtls_entropy_init, mbedtls_entropy_free>;
using CtrDrbg =
    MbedTlsContext<mbedtls_ctr_drbg_context, mbedtls_ctr_drbg_init, mbedtls_ctr_drbg_free>;
using PrivateKey = MbedTlsContext<mbedtls_pk_context, mbedtls_pk_init, mbedtls_pk_free>;
using Certificate = MbedTlsContext<mbedtls_x509_crt, mbedtls_x509_crt_init, mbedtls_x509_crt_free>;
using RevocationList =
    MbedTlsContext<mbedtls_x509_crl, mbedtls_x509_crl_init, mbedtls_x509_crl_free>;

}  // namespace sealkeeper

#endif
