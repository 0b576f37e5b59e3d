// The SHA-256 kernels of this build, and whether one works.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNELS_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNELS_H

#include <span>

#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {

// All that are compiled, the fastest for one lane first. This processor need not support them; the
// portable one, which is always among them, it does.
[[nodiscard]] std::span<const Sha256Kernel* const> CompiledSha256Kernels();

// Whether this processor supports `kernel` and the kernel, for each number of lanes, gives known
// answers.
[[nodiscard]] bool IsUsable(const Sha256Kernel& kernel);

}  // namespace sealkeeper

#endif
