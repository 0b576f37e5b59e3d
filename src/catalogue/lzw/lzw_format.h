// The compressed form of the entry block: LZW in the container of the classic Unix compress, but
// with codes of one fixed width throughout and no clear code. Shared by compressor and
// decompressor.
#ifndef SEALKEEPER_CATALOGUE_LZW_LZW_FORMAT_H
#define SEALKEEPER_CATALOGUE_LZW_LZW_FORMAT_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace sealkeeper::lzw {

inline constexpr unsigned kByteBits = 8;
inline constexpr unsigned kCodeBits = 12;
inline constexpr std::uint8_t kBlockModeFlag = 0x80;

// The container's magic and its flag byte, whose low bits hold the width of a code.
inline constexpr std::array<std::uint8_t, 3> kPrefix = {0x1F, 0x9D, kBlockModeFlag | kCodeBits};
inline constexpr std::size_t kMagicBytes = 2;
// The same bytes as a little-endian number.
inline constexpr std::uint16_t kMagicNumber = 0x9D1F;
static_assert(kMagicNumber == (kPrefix[0] | kPrefix[1] << 8U));
inline constexpr std::uint8_t kCodeBitsMask = 0x1F;

// Whether `input` begins with the container's magic.
[[nodiscard]] inline bool HasMagic(std::span<const std::uint8_t> input) {
    return input.size() >= kMagicBytes &&
           std::equal(input.begin(), input.begin() + kMagicBytes, kPrefix.begin());
}

// Codes 0 to 255 are the one-byte strings.
inline constexpr std::uint16_t kOneByteStringCount = 256;

// Code 256 is the clear code of the classic program and is never used here.
inline constexpr std::uint16_t kFirstFreeCode = 257;

// The first code that is never assigned: when the next code would be this one, the dictionary is
// full and stays as it is.
inline constexpr std::uint16_t kEndOfCodes = 4095;

// The uncompressed length is stored in 32 bits.
inline constexpr std::uint64_t kMaxUncompressedBytes = std::numeric_limits<std::uint32_t>::max();

}  // namespace sealkeeper::lzw

#endif
