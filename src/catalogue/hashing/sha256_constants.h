// What SHA-256 (FIPS 180-4) has as data.
//
// Declared `extern`, not `inline constexpr`: each file that uses something inline may emit it, and
// the linker keeps one copy for all. The files of the kernels, compiled with flags of their own,
// have no part in that.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_CONSTANTS_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_CONSTANTS_H

#include <cstddef>
#include <cstdint>

#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {

inline constexpr std::size_t kSha256Rounds = 64;

// FIPS 180-4, 5.3.3.
extern const std::uint32_t kSha256InitialState[kSha256StateWords];

// FIPS 180-4, 4.2.2. Aligned for kernels, which load four words at once.
alignas(16) extern const std::uint32_t kSha256RoundConstants[kSha256Rounds];

}  // namespace sealkeeper

#endif
