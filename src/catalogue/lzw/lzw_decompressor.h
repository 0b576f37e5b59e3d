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
        // The byte with the code width is missing or says 0.
        NoCodeWidth,
        UnknownCode,
        // More than `lzw::kMaxUncompressedBytes`.
        TooManyBytes,
    };

    Kind kind = Kind::NoCodeWidth;
    // The offset in the input of the byte with the code width, or of the byte in which the code
    // begins.
    std::size_t offset = 0;
    // The number of the code, counted from 0, and the code.
    std::size_t codeIndex = 0;
    std::uint32_t code = 0;
    // The last code that stands for a string at that point.
    std::uint32_t lastCode = 0;
};

// Decompresses its input, which must outlive it, piece by piece. Memory is bounded whatever the
// length of the output: the output of the growing codes, about 7 MiB at most, and 96 KiB, of which
// 32 KiB are allocated before the first read. Time is linear in the length of input and output.
class LzwDecompressor {
  public:
    // A move keeps `piece_` valid: the vectors that it points into keep their memory.
    LzwDecompressor(LzwDecompressor&&) = default;
    LzwDecompressor& operator=(LzwDecompressor&&) = default;
    LzwDecompressor(const LzwDecompressor&) = delete;
    LzwDecompressor& operator=(const LzwDecompressor&) = delete;
    ~LzwDecompressor() = default;

    // Follows all codes of `input`, so that every error is found before the first byte is read.
    // Nothing when the code width is missing or 0, a code is not in the dictionary, or the output
    // would be longer than `lzw::kMaxUncompressedBytes`; then the reason is stored in `*fault`,
    // unless `fault` is null. Deliberate quirk: input without the container's magic is valid and
    // gives no bytes. Bits past the last whole code are ignored.
    [[nodiscard]] static std::optional<LzwDecompressor> Open(std::span<const std::uint8_t> input,
                                                             LzwFault* fault = nullptr);

    // How many bytes are left to read.
    [[nodiscard]] std::uint64_t BytesLeft() const { return bytesLeft_; }

    // Fills `bytes` with the next bytes. False, with nothing read, when fewer are left. Lack of
    // memory is an exception; the decompressor must not be used after it.
    [[nodiscard]] bool Read(std::span<std::uint8_t> bytes);

  private:
    LzwDecompressor() = default;

    std::span<const std::uint8_t> NextPiece();
    void WriteGrowingStrings();
    std::span<const std::uint8_t> WriteStrings();

    lzw::PackedCodes codes_;
    lzw::DecompressorDictionary dictionary_;
    std::uint64_t bytesLeft_ = 0;
    // The number of the next code to be written.
    std::size_t index_ = 0;
    // The output of the growing codes, which strings of two or more bytes refer to.
    std::vector<std::uint8_t> growing_;
    // The output of some of the later codes.
    std::vector<std::uint8_t> buffer_;
    // Decompressed but not yet read: a part of either.
    std::span<const std::uint8_t> piece_;
};

}  // namespace sealkeeper

#endif
