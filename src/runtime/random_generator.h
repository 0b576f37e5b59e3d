// The random generator that private-key operations need: CTR_DRBG (NIST SP 800-90A) over the
// system's entropy.
#ifndef SEALKEEPER_RUNTIME_RANDOM_GENERATOR_H
#define SEALKEEPER_RUNTIME_RANDOM_GENERATOR_H

#include "runtime/mbedtls_contexts.h"

namespace sealkeeper {

class RandomGenerator {
  public:
    // Seeds the generator, without a personalisation string. False when there is no entropy; then
    // the generator must not be used.
    [[nodiscard]] bool Seed();

    [[nodiscard]] mbedtls_ctr_drbg_context* Get() { return generator_.Get(); }

  private:
    // Declared first, so destroyed last: the generator uses it.
    EntropySource entropy_;
    CtrDrbg generator_;
};

}  // namespace sealkeeper

#endif
