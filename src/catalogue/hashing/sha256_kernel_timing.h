// How long the calls of SHA-256 kernels take on this processor.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_TIMING_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_TIMING_H

#include <span>
#include <vector>

#include "catalogue/hashing/sha256_kernel.h"
#include "catalogue/hashing/sha256_plan.h"

namespace sealkeeper {

// Times the calls of `kernels`, which are usable, over data in the processor's nearest cache. It
// takes half a millisecond or less, and where the processor is so slow or so busy that trying each
// call twice takes longer, that long.
[[nodiscard]] std::vector<Sha256CallCosts> TimeSha256Kernels(
    std::span<const Sha256Kernel* const> kernels);

}  // namespace sealkeeper

#endif
