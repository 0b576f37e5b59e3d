// How a SHA-256 message ends (FIPS 180-4), around the compression of whole blocks.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_PADDING_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_PADDING_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "catalogue/hashing/sha256_kernel.h"
#include "runtime/sha256.h"

namespace sealkeeper {

// What the padding may take, beyond the message: a byte and the length, and up to a block of zeros.
inline constexpr std::size_t kMaxSha256PaddingBytes = kSha256BlockBytes + 8;

// Pads (5.1.1) the end of a message of `messageBytes`: its last `lastBytes`, from a whole block on,
// are at the start of `buffer`, which has room for `kMaxSha256PaddingBytes` more. Returns the
// number of whole blocks that are there then.
[[nodiscard]] std::size_t AppendSha256Padding(std::span<std::uint8_t> buffer, std::size_t lastBytes,
                                              std::uint64_t messageBytes);

// The digest that the hash value after the last block is.
[[nodiscard]] Sha256Digest DigestOf(std::span<const std::uint32_t, kSha256StateWords> state);

}  // namespace sealkeeper

#endif
