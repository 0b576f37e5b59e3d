// Measures how long calls of SHA-256 kernels take on this processor.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_TIMING_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_TIMING_H

#include <span>
#include <vector>

#include "catalogue/hashing/sha256_kernel.h"
#include "catalogue/hashing/sha256_plan.h"

namespace sealkeeper {

// Times the calls of `kernels`, which must be usable, on data in the L1 cache. Takes half a
// millisecond or less, unless two tries of each call take longer on a slow or busy processor.
[[nodiscard]] std::vector<Sha256CallCosts> TimeSha256Kernels(
    std::span<const Sha256Kernel* const> kernels);

}  // namespace sealkeeper

#endif
