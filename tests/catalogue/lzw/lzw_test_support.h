// Writes compressed input code by code, so that tests can store what no compressor writes, and
// reads the whole decompressed form at once.
#ifndef SEALKEEPER_TESTS_CATALOGUE_LZW_TEST_SUPPORT_H
#define SEALKEEPER_TESTS_CATALOGUE_LZW_TEST_SUPPORT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "catalogue/lzw/lzw_compressor.h"
#include "catalogue/lzw/lzw_decompressor.h"

namespace sealkeeper::test {

// The compressed form of `bytes`, which must not be empty.
[[nodiscard]] inline std::vector<std::uint8_t> Compressed(const std::vector<std::uint8_t>& bytes) {
    std::vector<std::uint8_t> output;
    LzwCompressor compressor(output);
    compressor.Append(bytes);
    compressor.Finish();
    return output;
}

// The decompressed form of `input`; nothing if it is refused.
[[nodiscard]] inline std::optional<std::vector<std::uint8_t>> Decompressed(
    const std::vector<std::uint8_t>& input) {
    auto block = LzwDecompressor::Open(input);
    if (!block) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes(block->BytesLeft());
    if (!block->Read(bytes)) {
        return std::nullopt;
    }
    return bytes;
}

// The container with `flags` and the codes, each `width` bits wide, packed least-significant bit
// first. The last byte is padded with zero bits.
[[nodiscard]] inline std::vector<std::uint8_t> PackedCodes(const std::vector<std::uint32_t>& codes,
                                                           unsigned width, std::uint8_t flags) {
    std::vector<std::uint8_t> packed = {0x1F, 0x9D, flags};
    std::uint64_t pending = 0;
    unsigned pendingBits = 0;
    for (const std::uint32_t code : codes) {
        pending |= static_cast<std::uint64_t>(code) << pendingBits;
        for (pendingBits += width; pendingBits >= 8; pendingBits -= 8) {
            packed.push_back(static_cast<std::uint8_t>(pending));
            pending >>= 8U;
        }
    }
    if (pendingBits > 0) {
        packed.push_back(static_cast<std::uint8_t>(pending));
    }
    return packed;
}

[[nodiscard]] inline std::vector<std::uint8_t> PackedCodes(
    const std::vector<std::uint32_t>& codes) {
    return PackedCodes(codes, 12, 0x8C);
}

inline constexpr std::uint32_t kLastCode = 4094;

// The fewest codes for `count` equal bytes. Each string is one byte longer than the one before
// until the dictionary is full. Then the longest is repeated.
[[nodiscard]] inline std::vector<std::uint32_t> CodesOfRun(std::uint64_t count) {
    constexpr std::uint64_t kLongestString = kLastCode - 255;
    std::vector<std::uint32_t> codes;
    std::uint64_t left = count;
    for (std::uint64_t length = 1; left > 0; ++length) {
        const std::uint64_t taken = length < kLongestString ? length : kLongestString;
        const std::uint64_t used = taken < left ? taken : left;
        codes.push_back(used == 1 ? 'A' : static_cast<std::uint32_t>(255 + used));
        left -= used;
    }
    return codes;
}

// The codes that the format prescribes, found in the simplest way: always the longest string in the
// dictionary.
[[nodiscard]] inline std::vector<std::uint32_t> CodesOf(const std::vector<std::uint8_t>& bytes) {
    constexpr std::uint32_t kFirstNewCode = 257;
    // Keyed by the code of a string and the next byte; 0 if the dictionary has no such string.
    std::vector<std::array<std::uint32_t, 256>> longer(kFirstNewCode);
    std::vector<std::uint32_t> codes;
    std::uint32_t matched = bytes.front();
    for (std::size_t i = 1; i < bytes.size(); ++i) {
        const std::uint32_t found = longer[matched][bytes[i]];
        if (found != 0) {
            matched = found;
            continue;
        }
        codes.push_back(matched);
        if (longer.size() <= kLastCode) {
            longer[matched][bytes[i]] = static_cast<std::uint32_t>(longer.size());
            longer.emplace_back();
        }
        matched = bytes[i];
    }
    codes.push_back(matched);
    return codes;
}

// The high bytes of a linear congruential generator: ANSI C's example of `rand`. `mask` limits
// their values.
[[nodiscard]] inline std::vector<std::uint8_t> PseudoRandom(std::size_t count, std::uint32_t mask) {
    std::vector<std::uint8_t> bytes;
    std::uint32_t state = 1;
    for (std::size_t i = 0; i < count; ++i) {
        state = (state * 1103515245U + 12345U) & 0x7FFFFFFFU;
        bytes.push_back(static_cast<std::uint8_t>((state >> 16U) & mask));
    }
    return bytes;
}

// Bytes like those of an entry block: short text interleaved with zeros, a run of zeros, and random
// bytes.
[[nodiscard]] inline std::vector<std::uint8_t> RecordLikeBytes(std::size_t count) {
    std::vector<std::uint8_t> bytes;
    std::uint32_t state = 3;
    const auto random = [&state](std::uint32_t below) {
        state = state * 1664525U + 1013904223U;
        return (state >> 8U) % below;
    };
    while (bytes.size() < count) {
        for (std::uint32_t left = random(60); left > 0; --left) {
            bytes.push_back(static_cast<std::uint8_t>('a' + random(6)));
            bytes.push_back(0);
        }
        bytes.insert(bytes.end(), random(500), 0);
        for (std::uint32_t left = random(97); left > 0; --left) {
            bytes.push_back(static_cast<std::uint8_t>(random(256)));
        }
    }
    bytes.resize(count);
    return bytes;
}

}  // namespace sealkeeper::test

#endif
