// The strings that codes stand for, found from the codes alone, without decompressing a byte.
#ifndef SEALKEEPER_CATALOGUE_LZW_DECOMPRESSOR_DICTIONARY_H
#define SEALKEEPER_CATALOGUE_LZW_DECOMPRESSOR_DICTIONARY_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "catalogue/lzw/lzw_format.h"
#include "catalogue/lzw/packed_codes.h"

namespace sealkeeper::lzw {

// Where the bytes of a string are. A longer string is a part of the output of the growing codes:
// every such string is a prefix and the byte after it, as they were written there, so that output
// doubles as the dictionary. A one-byte string is in a table of all bytes.
struct StoredString {
    std::uint32_t offset = 0;
    // 0 for a code that is not in the dictionary.
    std::uint32_t length = 0;
};

// The strings of all codes, and the length of the output of all codes.
class DecompressorDictionary {
  public:
    // How many codes are growing codes: the first code, which adds no string, and all codes that
    // add one. While these are written, a string may overlap its own copy. Later codes add no
    // string, and their strings do not overlap their copies.
    static constexpr std::size_t kGrowingCodes = kEndOfCodes - kFirstFreeCode + 1;
    static constexpr std::size_t kLongestString = kGrowingCodes;

    DecompressorDictionary();

    // Follows the codes. Each code but the first adds the string of the code before it plus the
    // first byte of its own string. False when a code is not in the dictionary or the output would
    // be longer than `kMaxUncompressedBytes`. Call once.
    [[nodiscard]] bool Follow(const PackedCodes& codes);

    // The number of the code at which `Follow` failed.
    [[nodiscard]] std::size_t EndedAt() const { return endedAt_; }

    // Whether `code` stands for a string at the point where `Follow` ended.
    [[nodiscard]] bool Knows(std::uint32_t code) const { return Find(code).length != 0; }

    // The last code that can stand for a string at code number `index`.
    [[nodiscard]] static std::uint32_t LastCodeAt(std::size_t index);

    // The string of a code that `Follow` has accepted.
    [[nodiscard]] const StoredString& operator[](std::uint32_t code) const {
        return strings_[code];
    }

    // The length of the output of all codes, and of the growing codes alone.
    [[nodiscard]] std::size_t Bytes() const { return bytes_; }
    [[nodiscard]] std::size_t GrowingBytes() const { return growingBytes_; }

  private:
    // So the output of the growing codes is far below what a 32-bit offset can address.
    static_assert(kGrowingCodes * kLongestString < kMaxUncompressedBytes);

    [[nodiscard]] bool FollowUnchanging(const PackedCodes& codes, std::size_t first);
    [[nodiscard]] const StoredString& Find(std::uint32_t code) const;

    // On the heap, because 32 KiB in the object could overflow a small stack and end the process.
    std::vector<StoredString> strings_;
    std::size_t bytes_ = 0;
    std::size_t growingBytes_ = 0;
    std::size_t endedAt_ = 0;
};

}  // namespace sealkeeper::lzw

#endif
