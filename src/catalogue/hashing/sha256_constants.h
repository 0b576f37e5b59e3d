// SHA-256 constants (FIPS 180-4).
//
// The tables are declared `extern`, not `inline constexpr`: every file that uses an inline variable
// may emit a copy, of which the linker keeps one for all. The files of the kernels, which are
// compiled with their own flags, must not contribute copies.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_CONSTANTS_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_CONSTANTS_H

#include <cstddef>
#include <cstdint>

#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {

inline constexpr std::size_t kSha256Rounds = 64;

// FIPS 180-4, 5.3.3.
extern const std::uint32_t kSha256InitialState[kSha256StateWords];

// FIPS 180-4, 4.2.2. Aligned for kernels that load four words at once.
alignas(16) extern const std::uint32_t kSha256RoundConstants[kSha256Rounds];

}  // namespace sealkeeper

#endif
