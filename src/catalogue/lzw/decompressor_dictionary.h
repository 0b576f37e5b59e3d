// The strings that codes stand for, told from the codes alone: no byte is decompressed for it.
#ifndef SEALKEEPER_CATALOGUE_LZW_DECOMPRESSOR_DICTIONARY_H
#define SEALKEEPER_CATALOGUE_LZW_DECOMPRESSOR_DICTIONARY_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "catalogue/lzw/lzw_format.h"
#include "catalogue/lzw/packed_codes.h"

namespace sealkeeper::lzw {

// Where a string stands: a string of two bytes and more in the bytes that the growing codes give, a
// one-byte string in a table of all bytes. Every string of two bytes and more is what its prefix
// and the byte after it gave when they were written, so those bytes hold the dictionary.
struct StoredString {
    std::uint32_t offset = 0;
    // 0 for a code that is not in the dictionary.
    std::uint32_t length = 0;
};

// The strings of all codes, and how many bytes the codes give altogether.
class DecompressorDictionary {
  public:
    // The codes that add a string, the first included, which adds none. While these are written, a
    // string may reach into its own copy; after them none does, and no string is added.
    static constexpr std::size_t kGrowingCodes = kEndOfCodes - kFirstFreeCode + 1;
    static constexpr std::size_t kLongestString = kGrowingCodes;

    DecompressorDictionary();

    // Follows the codes, each of which but the first adds the string of the code before it and the
    // first byte of its own. Returns false when one is not in the dictionary or they give more than
    // `kMaxUncompressedBytes` bytes. Called once.
    [[nodiscard]] bool Follow(const PackedCodes& codes);

    // The number of the code at which `Follow` ended when it returned false.
    [[nodiscard]] std::size_t EndedAt() const { return endedAt_; }

    // Whether `code` stands for a string where `Follow` ended.
    [[nodiscard]] bool Knows(std::uint32_t code) const { return Find(code).length != 0; }

    // The last code that can stand for a string where the code number `index` is.
    [[nodiscard]] static std::uint32_t LastCodeAt(std::size_t index);

    // The string of a code that `Follow` has seen.
    [[nodiscard]] const StoredString& operator[](std::uint32_t code) const {
        return strings_[code];
    }

    // The bytes that all codes give, and those of the first `kGrowingCodes`.
    [[nodiscard]] std::size_t Bytes() const { return bytes_; }
    [[nodiscard]] std::size_t GrowingBytes() const { return growingBytes_; }

  private:
    // So everything that the first codes give is far below what the offsets can tell.
    static_assert(kGrowingCodes * kLongestString < kMaxUncompressedBytes);

    [[nodiscard]] bool FollowUnchanging(const PackedCodes& codes, std::size_t first);
    [[nodiscard]] const StoredString& Find(std::uint32_t code) const;

    // Not within the object: on a stack that cannot grow, its 32 KiB would end the process.
    std::vector<StoredString> strings_;
    std::size_t bytes_ = 0;
    std::size_t growingBytes_ = 0;
    std::size_t endedAt_ = 0;
};

}  // namespace sealkeeper::lzw

#endif
