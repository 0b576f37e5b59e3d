#include "catalogue/lzw/decompressor_dictionary.h"

#include <algorithm>

namespace sealkeeper::lzw {

DecompressorDictionary::DecompressorDictionary() : strings_(kEndOfCodes + 1) {
    for (std::uint32_t code = 0; code < kOneByteStringCount; ++code) {
        strings_[code] = {code, 1};
    }
}

bool DecompressorDictionary::Follow(const PackedCodes& codes) {
    const std::size_t growing = std::min(codes.Count(), kGrowingCodes);
    StoredString previous;
    for (std::size_t i = 0; i < growing; ++i) {
        if (i > 0) {
            strings_[kFirstFreeCode - 1 + i] = {previous.offset, previous.length + 1};
        }
        previous = {static_cast<std::uint32_t>(bytes_), Find(codes.At(i)).length};
        if (previous.length == 0) {
            endedAt_ = i;
            return false;
        }
        bytes_ += previous.length;
    }
    growingBytes_ = bytes_;
    return FollowUnchanging(codes, growing);
}

// Follows the codes from number `first` on, which add no strings.
bool DecompressorDictionary::FollowUnchanging(const PackedCodes& codes, std::size_t first) {
    std::size_t bytes = bytes_;
    for (std::size_t i = first; i < codes.Count(); ++i) {
        const std::size_t length = Find(codes.At(i)).length;
        if (length == 0 || length > kMaxUncompressedBytes - bytes) {
            endedAt_ = i;
            return false;
        }
        bytes += length;
    }
    bytes_ = bytes;
    return true;
}

std::uint32_t DecompressorDictionary::LastCodeAt(std::size_t index) {
    const auto added = static_cast<std::uint32_t>(std::min(index, kGrowingCodes - 1));
    return added == 0 ? kOneByteStringCount - 1 : kFirstFreeCode + added - 1;
}

// The last entry is a sentinel for all codes that are never assigned.
const StoredString& DecompressorDictionary::Find(std::uint32_t code) const {
    return strings_[std::min<std::uint32_t>(code, kEndOfCodes)];
}

}  // namespace sealkeeper::lzw
