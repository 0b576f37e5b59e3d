#include "platform/little_endian.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;

template <typename Unsigned>
void ExpectStoredAs(Unsigned number, const Bytes& expected) {
    // One extra byte, which must stay untouched.
    Bytes bytes(sizeof(Unsigned) + 1, 0xEE);
    StoreLittleEndian(number, bytes);
    Bytes whole = expected;
    whole.push_back(0xEE);
    EXPECT_EQ(bytes, whole) << number;
    EXPECT_EQ(LoadLittleEndian<Unsigned>(bytes), number);
}

TEST(LittleEndian, NumbersOfEveryWidth) {
    ExpectStoredAs<std::uint8_t>(0xA1, {0xA1});
    ExpectStoredAs<std::uint16_t>(0xA1B2, {0xB2, 0xA1});
    ExpectStoredAs<std::uint32_t>(0xA1B2C3D4, {0xD4, 0xC3, 0xB2, 0xA1});
    ExpectStoredAs<std::uint64_t>(0xA1B2C3D4E5F60718,
                                  {0x18, 0x07, 0xF6, 0xE5, 0xD4, 0xC3, 0xB2, 0xA1});
}

TEST(LittleEndian, ExtremeNumbers) {
    ExpectStoredAs<std::uint16_t>(0, {0, 0});
    ExpectStoredAs<std::uint16_t>(0xFFFF, {0xFF, 0xFF});
    ExpectStoredAs<std::uint32_t>(0x80000000, {0, 0, 0, 0x80});
    ExpectStoredAs<std::uint64_t>(0x8000000000000000, {0, 0, 0, 0, 0, 0, 0, 0x80});
    ExpectStoredAs<std::uint64_t>(0xFFFFFFFFFFFFFFFF, Bytes(8, 0xFF));
    ExpectStoredAs<std::uint64_t>(1, {1, 0, 0, 0, 0, 0, 0, 0});
}

TEST(LittleEndian, LoadsFromAnyPosition) {
    const std::array<std::uint8_t, 6> bytes = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66};
    const std::span<const std::uint8_t> all(bytes);
    EXPECT_EQ(LoadLittleEndian<std::uint32_t>(all.subspan(1)), 0x55443322U);
    EXPECT_EQ(LoadLittleEndian<std::uint16_t>(all.subspan(3)), 0x5544U);
}

}  // namespace
}  // namespace sealkeeper
