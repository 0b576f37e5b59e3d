#include "catalogue/lzw_decompressor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "catalogue/catalogue_format.h"
#include "catalogue/lzw_format.h"

namespace sealkeeper {
namespace {

// Unpacks codes of one width, least-significant bit first.
class CodeReader {
  public:
    CodeReader(std::span<const std::uint8_t> packed, unsigned codeBits)
        : packed_(packed), codeBits_(codeBits), mask_((std::uint32_t{1} << codeBits) - 1) {}

    // Nothing when less than a whole code is left.
    [[nodiscard]] std::optional<std::uint32_t> Next() {
        while (pendingCount_ < codeBits_) {
            if (position_ == packed_.size()) {
                return std::nullopt;
            }
            pendingBits_ |= static_cast<std::uint64_t>(packed_[position_++]) << pendingCount_;
            pendingCount_ += kByteBits;
        }
        const auto code = static_cast<std::uint32_t>(pendingBits_) & mask_;
        pendingBits_ >>= codeBits_;
        pendingCount_ -= codeBits_;
        return code;
    }

  private:
    static constexpr unsigned kByteBits = 8;

    std::span<const std::uint8_t> packed_;
    unsigned codeBits_;
    std::uint32_t mask_;
    std::size_t position_ = 0;
    std::uint64_t pendingBits_ = 0;
    unsigned pendingCount_ = 0;
};

bool HasMagic(std::span<const std::uint8_t> input) {
    return input.size() >= lzw::kMagicBytes &&
           std::equal(input.begin(), input.begin() + lzw::kMagicBytes, lzw::kPrefix.begin());
}

// The codes behind the prefix; nothing when the width of a code is missing or 0.
std::optional<CodeReader> CodesOf(std::span<const std::uint8_t> input) {
    if (input.size() < lzw::kPrefix.size()) {
        return std::nullopt;
    }
    const unsigned codeBits = input[lzw::kMagicBytes] & lzw::kCodeBitsMask;
    if (codeBits == 0) {
        return std::nullopt;
    }
    return CodeReader(input.subspan(lzw::kPrefix.size()), codeBits);
}

// Where in the output a string stands. Every string of two bytes and more is what its prefix and
// the byte behind it gave when they were written, so the output itself holds the dictionary.
struct StoredString {
    std::size_t offset = 0;
    std::size_t length = 0;
};

// The strings as they grow code by code: each code but the first adds the string of the code before
// it and the first byte of its own.
class DecompressorDictionary {
  public:
    // Takes the next code of the stream, whose string will stand at the end of the output so far.
    // Returns that string where it already stands; its offset means nothing for a one-byte string.
    // Nothing when the code is not in the dictionary.
    [[nodiscard]] std::optional<StoredString> Take(std::uint32_t code) {
        if (outputBytes_ > 0 && nextCode_ < lzw::kEndOfCodes) {
            strings_[nextCode_++] = {previous_.offset, previous_.length + 1};
        }
        const auto string = Find(code);
        if (string) {
            previous_ = {outputBytes_, string->length};
            outputBytes_ += string->length;
        }
        return string;
    }

    [[nodiscard]] std::size_t OutputBytes() const { return outputBytes_; }

  private:
    [[nodiscard]] std::optional<StoredString> Find(std::uint32_t code) const {
        if (code < lzw::kOneByteStrings) {
            return StoredString{0, 1};
        }
        if (code < lzw::kFirstFreeCode || code >= nextCode_) {
            return std::nullopt;
        }
        return strings_[code];
    }

    std::array<StoredString, lzw::kEndOfCodes> strings_{};
    std::uint32_t nextCode_ = lzw::kFirstFreeCode;
    StoredString previous_;
    std::size_t outputBytes_ = 0;
};

// How many bytes the codes give; nothing when one is not in the dictionary or they are too many.
std::optional<std::size_t> DecompressedBytes(CodeReader codes) {
    DecompressorDictionary dictionary;
    while (const auto code = codes.Next()) {
        if (!dictionary.Take(*code) || dictionary.OutputBytes() > kMaxStoredLength) {
            return std::nullopt;
        }
    }
    return dictionary.OutputBytes();
}

// Writes the strings of the codes, which are known to fit, to `output`.
void WriteStrings(CodeReader codes, std::uint8_t* output) {
    DecompressorDictionary dictionary;
    std::uint8_t* next = output;
    while (const auto code = codes.Next()) {
        const auto string = dictionary.Take(*code);
        if (*code < lzw::kOneByteStrings) {
            *next++ = static_cast<std::uint8_t>(*code);
            continue;
        }
        // Byte by byte, in order: the string of a code just added reaches one byte into its own
        // copy.
        const std::uint8_t* from = output + string->offset;
        for (std::size_t i = 0; i < string->length; ++i) {
            *next++ = *from++;
        }
    }
}

}  // namespace

bool DecompressLzw(std::span<const std::uint8_t> input, std::uint64_t minimumBytes,
                   std::vector<std::uint8_t>& output) {
    if (!HasMagic(input)) {
        return minimumBytes == 0;
    }
    const auto codes = CodesOf(input);
    if (!codes) {
        return false;
    }
    const auto bytes = DecompressedBytes(*codes);
    if (!bytes || *bytes < minimumBytes) {
        return false;
    }
    const std::size_t before = output.size();
    output.resize(before + *bytes);
    WriteStrings(*codes, output.data() + before);
    return true;
}

}  // namespace sealkeeper
