#include "runtime/random_generator.h"

namespace sealkeeper {

bool RandomGenerator::Seed() {
    return mbedtls_ctr_drbg_seed(generator_.Get(), mbedtls_entropy_func, entropy_.Get(), nullptr,
                                 0) == 0;
}

}  // namespace sealkeeper
