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
    // None.
    PackedCodes() = default;

    // `codeBits` is from 1 to `kCodeBitsMask`. Bits past the last whole code are not looked at.
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

    // The byte that the code number `index` begins in.
    [[nodiscard]] std::size_t ByteOffset(std::size_t index) const {
        return index * codeBits_ / kByteBits;
    }

  private:
    static constexpr unsigned kByteBits = 8;
    // A code is taken out of the eight bytes from where it starts, as a number of this machine.
    static_assert(kCodeBitsMask + kByteBits <= 64);
    static_assert(std::endian::native == std::endian::little);

    const std::uint8_t* packed_ = nullptr;
    // Where the last bytes start; those, with zeros past them, are what the last codes are taken
    // from.
    std::size_t lastBytes_ = 0;
    std::array<std::uint8_t, 2 * sizeof(std::uint64_t)> paddedLastBytes_{};
    unsigned codeBits_ = 0;
    std::uint64_t mask_ = 0;
    std::size_t count_ = 0;
};

}  // namespace sealkeeper::lzw

#endif
