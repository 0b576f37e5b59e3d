// Decompresses the entry block of a catalogue as it is read; see lzw_format.h.
#ifndef SEALKEEPER_CATALOGUE_LZW_LZW_DECOMPRESSOR_H
#define SEALKEEPER_CATALOGUE_LZW_LZW_DECOMPRESSOR_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "catalogue/lzw/decompressor_dictionary.h"
#include "catalogue/lzw/packed_codes.h"

namespace sealkeeper {

// Why some bytes cannot be decompressed.
struct LzwFault {
    enum class Kind {
        // The byte that tells it is missing or tells 0.
        NoCodeWidth,
        UnknownCode,
        // More than `lzw::kMaxUncompressedBytes`.
        TooManyBytes,
    };

    Kind kind = Kind::NoCodeWidth;
    // Where the byte of the width stands, or should; the byte that the code begins in.
    std::size_t offset = 0;
    // The number of the code, counted from 0, and the code.
    std::size_t codeIndex = 0;
    std::uint32_t code = 0;
    // The last code that stands for a string there.
    std::uint32_t lastCode = 0;
};

// Gives the decompressed form of some bytes, which must outlive it, piece by piece. However much
// that is, it takes the memory of what the growing codes give, 7 MiB at the most, and 96 KiB, of
// which 32 KiB before the first bytes are read. Time is linear in the bytes read and produced.
class LzwDecompressor {
  public:
    // Moved, its view of its own memory stays good.
    LzwDecompressor(LzwDecompressor&&) = default;
    LzwDecompressor& operator=(LzwDecompressor&&) = default;
    LzwDecompressor(const LzwDecompressor&) = delete;
    LzwDecompressor& operator=(const LzwDecompressor&) = delete;
    ~LzwDecompressor() = default;

    // Walks the codes of `input`, so that all that can be wrong with them is known before a byte is
    // given. Nothing when the width of a code is missing or 0, a code is not in the dictionary, or
    // there would be more than `lzw::kMaxUncompressedBytes` bytes. Input without the container's
    // magic gives, deliberately, no bytes; the bits past the last whole code are not looked at.
    // What is wrong is left in `*fault`, unless that is null.
    [[nodiscard]] static std::optional<LzwDecompressor> Open(std::span<const std::uint8_t> input,
                                                             LzwFault* fault = nullptr);

    // How many bytes are left to be read.
    [[nodiscard]] std::uint64_t BytesLeft() const { return bytesLeft_; }

    // Fills `bytes` with the next ones. False, with nothing read, when fewer are left. Of no use
    // any more once it ran out of memory.
    [[nodiscard]] bool Read(std::span<std::uint8_t> bytes);

  private:
    LzwDecompressor() = default;

    std::span<const std::uint8_t> NextPiece();
    void WriteGrowingStrings();
    std::span<const std::uint8_t> WriteStrings();

    lzw::PackedCodes codes_;
    lzw::DecompressorDictionary dictionary_;
    std::uint64_t bytesLeft_ = 0;
    // The number of the code that is written next.
    std::size_t index_ = 0;
    // What the growing codes give, which all strings refer to.
    std::vector<std::uint8_t> growing_;
    // What some of the codes after them give.
    std::vector<std::uint8_t> buffer_;
    // Decompressed and not read yet: a part of either.
    std::span<const std::uint8_t> piece_;
};

}  // namespace sealkeeper

#endif
