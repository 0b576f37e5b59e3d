#include "catalogue/lzw/lzw_decompressor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <optional>

#include "catalogue/lzw/lzw_format.h"
#include "platform/large_pages.h"

namespace sealkeeper {
namespace {

// The codes of one width that are packed in some bytes, least-significant bit first.
class PackedCodes {
  public:
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

  private:
    static constexpr unsigned kByteBits = 8;
    // A code is taken out of the eight bytes from where it starts, as a number of this machine.
    static_assert(lzw::kCodeBitsMask + kByteBits <= 64);
    static_assert(std::endian::native == std::endian::little);

    const std::uint8_t* packed_;
    // Where the last bytes start; those, with zeros behind them, are what the last codes are taken
    // from.
    std::size_t lastBytes_;
    std::array<std::uint8_t, 2 * sizeof(std::uint64_t)> paddedLastBytes_{};
    unsigned codeBits_;
    std::uint64_t mask_;
    std::size_t count_;
};

bool HasMagic(std::span<const std::uint8_t> input) {
    return input.size() >= lzw::kMagicBytes &&
           std::equal(input.begin(), input.begin() + lzw::kMagicBytes, lzw::kPrefix.begin());
}

// The codes behind the prefix; nothing when the width of a code is missing or 0.
std::optional<PackedCodes> CodesOf(std::span<const std::uint8_t> input) {
    if (input.size() < lzw::kPrefix.size()) {
        return std::nullopt;
    }
    const unsigned codeBits = input[lzw::kMagicBytes] & lzw::kCodeBitsMask;
    if (codeBits == 0) {
        return std::nullopt;
    }
    return PackedCodes(input.subspan(lzw::kPrefix.size()), codeBits);
}

// Where a string stands: in the decompressed bytes or, for a one-byte string, in `kOneByteStrings`.
// Every string of two bytes and more is what its prefix and the byte behind it gave when they were
// written, so the decompressed bytes themselves hold the dictionary.
struct StoredString {
    std::uint32_t offset = 0;
    // 0 for a code that is not in the dictionary.
    std::uint32_t length = 0;
};

// The strings of all codes, and what the codes give altogether.
class DecompressorDictionary {
  public:
    DecompressorDictionary() {
        for (std::uint32_t code = 0; code < lzw::kOneByteStrings; ++code) {
            strings_[code] = {code, 1};
        }
    }

    // Follows the codes, each of which but the first adds the string of the code before it and the
    // first byte of its own. Returns false when one is not in the dictionary or they give more than
    // `lzw::kMaxUncompressedBytes` bytes.
    [[nodiscard]] bool Follow(const PackedCodes& codes) {
        const std::size_t growing = std::min(codes.Count(), kGrowingCodes);
        StoredString previous;
        for (std::size_t i = 0; i < growing; ++i) {
            if (i > 0) {
                strings_[lzw::kFirstFreeCode - 1 + i] = {previous.offset, previous.length + 1};
            }
            previous = {static_cast<std::uint32_t>(bytes_), Find(codes.At(i)).length};
            if (previous.length == 0) {
                return false;
            }
            bytes_ += previous.length;
        }
        growingBytes_ = bytes_;
        return FollowUnchanging(codes, growing);
    }

    // The string of a code that `Follow` has seen.
    [[nodiscard]] const StoredString& operator[](std::uint32_t code) const {
        return strings_[code];
    }

    // The bytes that all codes give, and those of the first `kGrowingCodes`.
    [[nodiscard]] std::size_t Bytes() const { return bytes_; }
    [[nodiscard]] std::size_t GrowingBytes() const { return growingBytes_; }

    // The codes that add a string, the first included, which adds none. While these are written, a
    // string may reach into its own copy; behind them none does.
    static constexpr std::size_t kGrowingCodes = lzw::kEndOfCodes - lzw::kFirstFreeCode + 1;
    static constexpr std::size_t kLongestString = kGrowingCodes;
    // So everything that the first codes give is far below what the offsets can tell.
    static_assert(kGrowingCodes * kLongestString < lzw::kMaxUncompressedBytes);

  private:
    // Follows the codes from the number `first`, which add nothing.
    [[nodiscard]] bool FollowUnchanging(const PackedCodes& codes, std::size_t first) {
        std::size_t bytes = bytes_;
        for (std::size_t i = first; i < codes.Count(); ++i) {
            const std::size_t length = Find(codes.At(i)).length;
            bytes += length;
            if (length == 0 || bytes > lzw::kMaxUncompressedBytes) {
                return false;
            }
        }
        bytes_ = bytes;
        return true;
    }

    // The last entry stands for every number that is never assigned.
    [[nodiscard]] const StoredString& Find(std::uint32_t code) const {
        return strings_[std::min<std::uint32_t>(code, lzw::kEndOfCodes)];
    }

    std::array<StoredString, lzw::kEndOfCodes + 1> strings_{};
    std::size_t bytes_ = 0;
    std::size_t growingBytes_ = 0;
};

// Strings are copied in steps of this many bytes where there is room behind them.
constexpr std::size_t kStepBytes = 16;

constexpr auto kOneByteStrings = [] {
    std::array<std::uint8_t, lzw::kOneByteStrings + kStepBytes> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(i);
    }
    return bytes;
}();

// Writes the strings of codes that `DecompressorDictionary::Follow` has found sound.
class StringWriter {
  public:
    StringWriter(const PackedCodes& codes, const DecompressorDictionary& dictionary,
                 std::vector<std::uint8_t>& output)
        : codes_(codes), dictionary_(dictionary), output_(output) {}

    void WriteAll() {
        const std::size_t before = output_.size();
        const std::size_t end = before + dictionary_.Bytes();
        output_.reserve(end);
        next_ = output_.data() + before;
        PreferLargePages(next_, dictionary_.Bytes());
        start_ = next_;
        output_.resize(before + dictionary_.GrowingBytes());
        WriteByteByByte(std::min(codes_.Count(), DecompressorDictionary::kGrowingCodes));
        // Piece by piece, so that the zeros which a piece starts with never leave the cache.
        while (output_.size() < end) {
            output_.resize(std::min(end, output_.size() + kPieceBytes));
            WriteInSteps();
        }
        WriteByteByByte(codes_.Count());
    }

  private:
    static constexpr std::size_t kPieceBytes = 65536;
    // What the copy of a string may write, the end of the last step included.
    static constexpr std::size_t kRoomBytes = DecompressorDictionary::kLongestString + kStepBytes;
    static_assert(kPieceBytes > kRoomBytes);

    [[nodiscard]] const std::uint8_t* Source(std::uint32_t code, const StoredString& string) const {
        return (code < lzw::kOneByteStrings ? kOneByteStrings.data() : start_) + string.offset;
    }

    // Up to the code number `end`. In order, since the string of a code just added reaches one byte
    // into its own copy.
    void WriteByteByByte(std::size_t end) {
        for (; index_ < end; ++index_) {
            const std::uint32_t code = codes_.At(index_);
            const StoredString& string = dictionary_[code];
            const std::uint8_t* from = Source(code, string);
            for (std::uint32_t i = 0; i < string.length; ++i) {
                *next_++ = *from++;
            }
        }
    }

    // As long as there is room for any string.
    void WriteInSteps() {
        const PackedCodes codes = codes_;
        const DecompressorDictionary& dictionary = dictionary_;
        const std::array<const std::uint8_t*, 2> sources = {start_, kOneByteStrings.data()};
        const std::uint8_t* const end = output_.data() + output_.size();
        std::uint8_t* next = next_;
        std::size_t index = index_;
        while (index < codes.Count() && end - next >= std::ptrdiff_t{kRoomBytes}) {
            const std::uint32_t code = codes.At(index++);
            const StoredString string = dictionary[code];
            const std::uint8_t* from =
                sources[static_cast<std::size_t>(code < lzw::kOneByteStrings)] + string.offset;
            std::memmove(next, from, kStepBytes);
            for (std::size_t done = kStepBytes; done < string.length; done += kStepBytes) {
                std::memmove(next + done, from + done, kStepBytes);
            }
            next += string.length;
        }
        next_ = next;
        index_ = index;
    }

    PackedCodes codes_;
    const DecompressorDictionary& dictionary_;
    std::vector<std::uint8_t>& output_;
    const std::uint8_t* start_ = nullptr;
    std::uint8_t* next_ = nullptr;
    std::size_t index_ = 0;
};

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
    DecompressorDictionary dictionary;
    if (!dictionary.Follow(*codes) || dictionary.Bytes() < minimumBytes) {
        return false;
    }
    StringWriter(*codes, dictionary, output).WriteAll();
    return true;
}

}  // namespace sealkeeper
