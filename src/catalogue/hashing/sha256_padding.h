// SHA-256 padding and the final digest (FIPS 180-4).
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_PADDING_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_PADDING_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "catalogue/hashing/sha256_kernel.h"
#include "runtime/sha256.h"

namespace sealkeeper {

// The length of the message, in bits, at the end of its padding.
inline constexpr std::size_t kSha256LengthBytes = 8;

// The most bytes that padding may need: a byte, the length and, between them, up to 63 zeros.
inline constexpr std::size_t kMaxSha256PaddingBytes = kSha256BlockBytes + kSha256LengthBytes;

// Pads (FIPS 180-4, 5.1.1) a message of `messageBytes` bytes. `buffer` begins with its last
// `lastBytes` bytes, which begin at a block boundary of the message, and has room for
// `kMaxSha256PaddingBytes` more. Returns the number of whole blocks in `buffer`.
[[nodiscard]] std::size_t AppendSha256Padding(std::span<std::uint8_t> buffer, std::size_t lastBytes,
                                              std::uint64_t messageBytes);

// The digest: the hash value after the last block, as big-endian bytes.
[[nodiscard]] Sha256Digest DigestOf(std::span<const std::uint32_t, kSha256StateWords> state);

}  // namespace sealkeeper

#endif
