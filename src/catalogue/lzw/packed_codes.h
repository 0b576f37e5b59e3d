// Codes of one width, packed least-significant bit first.
#ifndef SEALKEEPER_CATALOGUE_LZW_PACKED_CODES_H
#define SEALKEEPER_CATALOGUE_LZW_PACKED_CODES_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "catalogue/lzw/lzw_format.h"

namespace sealkeeper::lzw {

// A view of the bytes, which must outlive it.
class PackedCodes {
  public:
    // No codes.
    PackedCodes() = default;

    // `codeBits` is from 1 to `kCodeBitsMask`. Bits past the last whole code are ignored.
    PackedCodes(std::span<const std::uint8_t> packed, unsigned codeBits)
        : packed_(packed.data()),
          lastBytes_(packed.size() - std::min(packed.size(), sizeof(std::uint64_t))),
          codeBits_(codeBits),
          mask_((std::uint64_t{1} << codeBits) - 1),
          count_(packed.size() * kByteBits / codeBits) {
        std::copy(packed.begin() + static_cast<std::ptrdiff_t>(lastBytes_), packed.end(),
                  paddedLastBytes_.begin());
    }

    // How many whole codes there are.
    [[nodiscard]] std::size_t Count() const { return count_; }

    // The code number `index`, counted from 0; `index` is below `Count()`.
    [[nodiscard]] std::uint32_t At(std::size_t index) const {
        const std::size_t bit = index * codeBits_;
        const std::size_t byte = bit / kByteBits;
        std::uint64_t word;
        std::memcpy(
            &word,
            byte < lastBytes_ ? packed_ + byte : paddedLastBytes_.data() + (byte - lastBytes_),
            sizeof(word));
        return static_cast<std::uint32_t>(word >> (bit % kByteBits) & mask_);
    }

    // The byte in which code number `index` begins.
    [[nodiscard]] std::size_t ByteOffset(std::size_t index) const {
        return index * codeBits_ / kByteBits;
    }

  private:
    // A code is extracted from the eight bytes that it starts in, loaded as one little-endian
    // number.
    static_assert(kCodeBitsMask + kByteBits <= 64);
    static_assert(std::endian::native == std::endian::little);

    const std::uint8_t* packed_ = nullptr;
    // Where the last eight bytes start. The last codes are read from a zero-padded copy of them, so
    // that no load goes past the end.
    std::size_t lastBytes_ = 0;
    std::array<std::uint8_t, 2 * sizeof(std::uint64_t)> paddedLastBytes_{};
    unsigned codeBits_ = 0;
    std::uint64_t mask_ = 0;
    std::size_t count_ = 0;
};

}  // namespace sealkeeper::lzw

#endif
