#include "runtime/scramble.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;
using test::BytesOf;
using test::Hex;
using test::Sha256Hex;

Bytes Scrambled(Bytes bytes) {
    Scramble(bytes);
    return bytes;
}

Bytes Unscrambled(Bytes bytes) {
    Unscramble(bytes);
    return bytes;
}

void Place(Bytes& bytes, std::size_t offset, const Bytes& part) {
    std::copy(part.begin(), part.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

// A whole file whose signature begins with 5C.
Bytes ExampleImage() {
    Bytes image(1108, 0);
    Place(image, 0, {0x51, 0x56, 0x52, 0x00, 0x5C});
    Place(image, 1029, {1});
    Place(image, 1032, {1, 0, 0, 0, 1});
    Place(image, 1040, BytesOf("CrashReporter"));
    Place(image, 1104, {1});
    return image;
}

TEST(Scramble, WholeFile) {
    const Bytes scrambled = Scrambled(ExampleImage());
    const std::span<const std::uint8_t> bytes(scrambled);
    EXPECT_EQ(Hex(bytes.first(4)), "a7ab5865");
    EXPECT_EQ(Hex(bytes.subspan(1028, 12)), "0d101216191b1e2225272a70");
    EXPECT_EQ(Hex(bytes.subspan(1100)), "e4e7eaeef1f3f6f9");
    // Made with a few lines of Python.
    EXPECT_EQ(Sha256Hex(bytes), "be62f7d339db5575b0e8eb0c1f5762701d4c099364130eeef3b1163056488fbc");
    EXPECT_EQ(Unscrambled(scrambled), ExampleImage());
}

TEST(Scramble, ShortBuffers) {
    EXPECT_EQ(Scrambled({}), Bytes{});
    EXPECT_EQ(Scrambled({0x41}), Bytes{0x41});
    EXPECT_EQ(Scrambled({0x41, 0x42}), (Bytes{0x83, 0x45}));
    EXPECT_EQ(Scrambled({0xFF, 0xFF, 0xFF}), (Bytes{0xFE, 0x01, 0x05}));
    EXPECT_EQ(Unscrambled({}), Bytes{});
    EXPECT_EQ(Unscrambled({0x41}), Bytes{0x41});
    EXPECT_EQ(Unscrambled({0x83, 0x45}), (Bytes{0x41, 0x42}));
    EXPECT_EQ(Unscrambled({0xFE, 0x01, 0x05}), (Bytes{0xFF, 0xFF, 0xFF}));
}

TEST(Scramble, UnscrambleUndoesItAtEveryLength) {
    Bytes bytes;
    for (std::size_t i = 0; i < 600; ++i) {
        EXPECT_EQ(Unscrambled(Scrambled(bytes)), bytes) << i;
        bytes.push_back(static_cast<std::uint8_t>(i * 89 + 7));
    }
}

}  // namespace
}  // namespace sealkeeper
