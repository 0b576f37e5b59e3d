#include "catalogue/hashing/sha256_padding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "catalogue/hashing/sha256_test_support.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kRubbish = 0xEE;

// Padding byte by byte: the mark, zeros up to 8 bytes before the end of a block, the length in
// bits.
Bytes PaddedByHand(Bytes bytes, std::uint64_t messageBytes) {
    bytes.push_back(0x80);
    while (bytes.size() % 64 != 56) {
        bytes.push_back(0);
    }
    for (unsigned shift = 64; shift > 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>((messageBytes << 3U) >> (shift - 8)));
    }
    return bytes;
}

TEST(Sha256Padding, EndsEveryLengthUpTo200) {
    for (std::size_t length = 0; length <= 200; ++length) {
        const Bytes message = test::NumberedMessage(length, 1);
        const Bytes expected = PaddedByHand(message, length);
        Bytes buffer(length + kMaxSha256PaddingBytes, kRubbish);
        std::copy(message.begin(), message.end(), buffer.begin());

        const std::size_t blockCount = AppendSha256Padding(buffer, length, length);

        ASSERT_EQ(blockCount * kSha256BlockBytes, expected.size()) << length;
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), buffer.begin())) << length;
        EXPECT_TRUE(std::all_of(buffer.begin() + static_cast<std::ptrdiff_t>(expected.size()),
                                buffer.end(), [](std::uint8_t byte) { return byte == kRubbish; }))
            << length;
    }
}

TEST(Sha256Padding, CountsAllBytesOfTheMessage) {
    constexpr std::uint64_t kMessageBytes = (std::uint64_t{0x123456789A} << 8U) + 3;
    Bytes buffer(3 + kMaxSha256PaddingBytes, kRubbish);
    std::copy_n("abc", 3, buffer.begin());

    ASSERT_EQ(AppendSha256Padding(buffer, 3, kMessageBytes), 1U);

    buffer.resize(kSha256BlockBytes);
    EXPECT_EQ(buffer, PaddedByHand({'a', 'b', 'c'}, kMessageBytes));
}

TEST(Sha256Padding, WritesTheDigestBigEndian) {
    const std::array<std::uint32_t, kSha256StateWords> state = {0x00010203, 0x04050607, 0x08090a0b,
                                                                0x0c0d0e0f, 0x10111213, 0x14151617,
                                                                0x18191a1b, 0xfcfdfeff};
    EXPECT_EQ(test::Hex(DigestOf(state)),
              "000102030405060708090a0b0c0d0e0f101112131415161718191a1bfcfdfeff");
}

}  // namespace
}  // namespace sealkeeper
