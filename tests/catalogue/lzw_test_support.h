// Compressed input written code by code, so that tests can store what no compressor sends.
#ifndef SEALKEEPER_TESTS_CATALOGUE_LZW_TEST_SUPPORT_H
#define SEALKEEPER_TESTS_CATALOGUE_LZW_TEST_SUPPORT_H

#include <cstdint>
#include <vector>

namespace sealkeeper::test {

// The container with `flags` and the codes, each `width` bits wide, least-significant bit first;
// the last byte is filled with zero bits.
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

// Codes for `count` bytes of one value in as few codes as can be: each string is one byte longer
// than the one before, until the dictionary is full; then the longest again and again.
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

}  // namespace sealkeeper::test

#endif
