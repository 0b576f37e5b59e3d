#include "catalogue/lzw/lzw_decompressor.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

#include "catalogue/lzw/lzw_format.h"

namespace sealkeeper {
namespace {

using lzw::DecompressorDictionary;
using lzw::PackedCodes;
using lzw::StoredString;

// Strings are copied in steps of this many bytes. The last step may read and write past the end of
// a string.
constexpr std::size_t kStepBytes = 16;
// The most that one copy may write, with the overshoot of its last step.
constexpr std::size_t kRoomBytes = DecompressorDictionary::kLongestString + kStepBytes;
// Small enough for a piece to stay in the cache until it is read.
constexpr std::size_t kBufferBytes = 65536;
static_assert(kBufferBytes > kRoomBytes);

constexpr auto kEveryByte = [] {
    std::array<std::uint8_t, lzw::kOneByteStringCount + kStepBytes> bytes{};
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}();

// The codes after the prefix, none if the magic is missing. Nothing when the code width is missing
// or 0.
std::optional<PackedCodes> CodesOf(std::span<const std::uint8_t> input) {
    if (!lzw::HasMagic(input)) {
        return PackedCodes();
    }
    if (input.size() < lzw::kPrefix.size()) {
        return std::nullopt;
    }
    const unsigned codeBits = input[lzw::kMagicBytes] & lzw::kCodeBitsMask;
    if (codeBits == 0) {
        return std::nullopt;
    }
    return PackedCodes(input.subspan(lzw::kPrefix.size()), codeBits);
}

// What is wrong with the code at which `dictionary` failed.
LzwFault FaultOf(const PackedCodes& codes, const DecompressorDictionary& dictionary) {
    const std::size_t index = dictionary.EndedAt();
    LzwFault fault;
    fault.offset = lzw::kPrefix.size() + codes.ByteOffset(index);
    fault.codeIndex = index;
    fault.code = codes.At(index);
    fault.lastCode = DecompressorDictionary::LastCodeAt(index);
    fault.kind =
        dictionary.Knows(fault.code) ? LzwFault::Kind::TooManyBytes : LzwFault::Kind::UnknownCode;
    return fault;
}

}  // namespace

std::optional<LzwDecompressor> LzwDecompressor::Open(std::span<const std::uint8_t> input,
                                                     LzwFault* fault) {
    const auto codes = CodesOf(input);
    if (!codes) {
        if (fault != nullptr) {
            *fault = {LzwFault::Kind::NoCodeWidth, lzw::kMagicBytes};
        }
        return std::nullopt;
    }
    std::optional<LzwDecompressor> opened = LzwDecompressor();
    opened->codes_ = *codes;
    if (!opened->dictionary_.Follow(*codes)) {
        if (fault != nullptr) {
            *fault = FaultOf(*codes, opened->dictionary_);
        }
        return std::nullopt;
    }
    opened->bytesLeft_ = opened->dictionary_.Bytes();
    return opened;
}

bool LzwDecompressor::Read(std::span<std::uint8_t> bytes) {
    if (bytes.size() > bytesLeft_) {
        return false;
    }
    bytesLeft_ -= bytes.size();
    while (!bytes.empty()) {
        if (piece_.empty()) {
            piece_ = NextPiece();
        }
        const std::size_t count = std::min(bytes.size(), piece_.size());
        std::copy_n(piece_.begin(), count, bytes.begin());
        piece_ = piece_.subspan(count);
        bytes = bytes.subspan(count);
    }
    return true;
}

// Called only while codes are left, each of which gives at least one byte.
std::span<const std::uint8_t> LzwDecompressor::NextPiece() {
    if (index_ > 0) {
        return WriteStrings();
    }
    WriteGrowingStrings();
    return std::span(growing_).first(dictionary_.GrowingBytes());
}

// Only these copies may overlap their source: the string of a code that was just added overlaps its
// own copy by one byte. So they go byte by byte, in order.
void LzwDecompressor::WriteGrowingStrings() {
    growing_.resize(dictionary_.GrowingBytes() + kStepBytes);
    std::uint8_t* next = growing_.data();
    const std::size_t end = std::min(codes_.Count(), DecompressorDictionary::kGrowingCodes);
    for (; index_ < end; ++index_) {
        const std::uint32_t code = codes_.At(index_);
        const StoredString& string = dictionary_[code];
        const std::uint8_t* from =
            (code < lzw::kOneByteStringCount ? kEveryByte.data() : growing_.data()) + string.offset;
        for (std::uint32_t i = 0; i < string.length; ++i) {
            *next++ = *from++;
        }
    }
}

// Writes as many strings as fit into the buffer, whatever their lengths.
std::span<const std::uint8_t> LzwDecompressor::WriteStrings() {
    buffer_.resize(kBufferBytes);
    const PackedCodes codes = codes_;
    const DecompressorDictionary& dictionary = dictionary_;
    const std::array<const std::uint8_t*, 2> sources = {growing_.data(), kEveryByte.data()};
    std::uint8_t* const start = buffer_.data();
    const std::uint8_t* const lastStart = start + (kBufferBytes - kRoomBytes);
    std::uint8_t* next = start;
    std::size_t index = index_;
    while (index < codes.Count() && next <= lastStart) {
        const std::uint32_t code = codes.At(index++);
        const StoredString string = dictionary[code];
        const std::uint8_t* from =
            sources[static_cast<std::size_t>(code < lzw::kOneByteStringCount)] + string.offset;
        std::memcpy(next, from, kStepBytes);
        for (std::size_t done = kStepBytes; done < string.length; done += kStepBytes) {
            std::memcpy(next + done, from + done, kStepBytes);
        }
        next += string.length;
    }
    index_ = index;
    return {start, next};
}

}  // namespace sealkeeper
