// The SHA-256 kernels of this build, and the self-test of a kernel.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNELS_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNELS_H

#include <span>

#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {

// All compiled kernels, the fastest for one lane first. This processor may not support all of them.
// The portable kernel is always among them.
[[nodiscard]] std::span<const Sha256Kernel* const> CompiledSha256Kernels();

// Whether this processor supports `kernel` and the kernel gives known answers for each number of
// lanes.
[[nodiscard]] bool IsUsable(const Sha256Kernel& kernel);

}  // namespace sealkeeper

#endif
