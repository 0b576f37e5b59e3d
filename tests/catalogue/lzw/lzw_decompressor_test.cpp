#include "catalogue/lzw/lzw_decompressor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/lzw/lzw_compressor.h"
#include "catalogue/lzw/lzw_test_support.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;
using test::BytesOf;
using test::Hex;
using test::PackedCodes;

constexpr std::uint64_t kNoMinimum = 0;

// The decompressed form; the test fails when the input is refused.
Bytes Decompressed(const Bytes& input) {
    Bytes output;
    EXPECT_TRUE(DecompressLzw(input, kNoMinimum, output)) << Hex(input).substr(0, 80);
    return output;
}

std::string TextOf(const Bytes& input) {
    const Bytes output = Decompressed(input);
    return {output.begin(), output.end()};
}

Bytes FromHex(const std::string& hex) {
    Bytes bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(hex.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

// Bytes of a linear congruential generator, of which `mask` lets some values through.
Bytes PseudoRandom(std::size_t count, std::uint32_t mask) {
    Bytes bytes;
    std::uint32_t state = 7;
    for (std::size_t i = 0; i < count; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes.push_back(static_cast<std::uint8_t>((state >> 24U) & mask));
    }
    return bytes;
}

struct RoundTrip {
    std::string name;
    Bytes bytes;
};

TEST(LzwDecompressor, GivesBackWhatWasCompressed) {
    std::vector<RoundTrip> cases;
    for (const std::size_t size :
         std::vector<std::size_t>{1, 2, 3, 255, 256, 257, 3837, 3838, 3839, 3840, 3841, 20'000}) {
        cases.push_back({"random of " + std::to_string(size), PseudoRandom(size, 0xFF)});
        cases.push_back({"few values of " + std::to_string(size), PseudoRandom(size, 3)});
        cases.push_back({"zeros of " + std::to_string(size), Bytes(size, 0)});
    }
    cases.push_back({"1 MiB of zeros", Bytes(1'048'576, 0)});
    cases.push_back({"1 MiB of few values", PseudoRandom(1'048'576, 1)});
    cases.push_back({"1 MiB at random", PseudoRandom(1'048'576, 0xFF)});
    for (std::size_t size = 300'000; size < 300'040; ++size) {
        cases.push_back({"records of " + std::to_string(size), test::RecordLikeBytes(size)});
    }
    cases.push_back({"20 MB of zeros", Bytes(20'000'000, 0)});
    // The strings become longer up to 3839 bytes; then nothing but room for one more is left.
    cases.push_back({"zeros that end in the longest string", Bytes(7'370'880 + 20 * 3'839, 0)});
    cases.push_back({"10 MB of records", test::RecordLikeBytes(10'000'000)});
    for (const RoundTrip& given : cases) {
        EXPECT_TRUE(Decompressed(test::Compressed(given.bytes)) == given.bytes) << given.name;
    }
}

TEST(LzwDecompressor, NoBytesAreAPrefixAlone) {
    EXPECT_EQ(TextOf(FromHex("1f9d8c")), "");
}

// Every compressed form here was made with tests/independent/fixed_width_lzw.py.
TEST(LzwDecompressor, ReadsAnIndependentWritersBytes) {
    const std::vector<std::pair<const char*, std::string>> cases = {
        {"1f9d8c5a00", "Z"},
        {"1f9d8c612006", "ab"},
        {"1f9d8c6110106100", "aaaa"},
        {"1f9d8c612006013110022110", "abababababa"},
        {"1f9d8c7380066500027350066cc00673401065100604211007911062900720400702a1100c11106f2007650"
         "0",
         "she sells sea shells by the sea shore"},
        {"1f9d8c0010100231100451100671100301", std::string(40, '\0')},
        {"1f9d8cffe00f01f10fff00", "\xFF\xFE\xFF\xFE\xFF\xFF"},
    };
    for (const auto& [hex, text] : cases) {
        EXPECT_EQ(TextOf(FromHex(hex)), text) << hex;
    }
}

TEST(LzwDecompressor, AppendsBehindWhatTheBufferHolds) {
    Bytes output = {1, 2};
    EXPECT_TRUE(DecompressLzw(PackedCodes({'a', 257, 'b', 258}), kNoMinimum, output));
    EXPECT_EQ(output, (Bytes{1, 2, 'a', 'a', 'a', 'b', 'a', 'a', 'b'}));
}

TEST(LzwDecompressor, WithoutTheMagicThereIsNothing) {
    for (const char* hex :
         {"", "1f", "9d", "1e9d8c4100", "1f9c8c4100", "9d1f8c4100", "4100", "001f9d8c4100"}) {
        Bytes output = {9};
        EXPECT_TRUE(DecompressLzw(FromHex(hex), kNoMinimum, output)) << hex;
        EXPECT_EQ(output, Bytes{9}) << hex;
    }
}

TEST(LzwDecompressor, RefusesCodesWithoutAWidth) {
    for (const char* hex : {"1f9d", "1f9d00", "1f9d804100", "1f9de0ffffff"}) {
        Bytes output = {9};
        EXPECT_FALSE(DecompressLzw(FromHex(hex), kNoMinimum, output)) << hex;
        EXPECT_EQ(output, Bytes{9}) << hex;
    }
}

TEST(LzwDecompressor, OnlyTheWidthOfTheFlagByteCounts) {
    for (const std::uint8_t flags : Bytes{0x0C, 0x2C, 0x4C, 0x6C, 0xEC}) {
        EXPECT_EQ(TextOf(PackedCodes({'a', 257, 'b'}, 12, flags)), "aaab") << int{flags};
    }
}

TEST(LzwDecompressor, CodesOfOtherWidths) {
    EXPECT_EQ(Decompressed(PackedCodes({1, 0, 0, 1, 1, 1, 0, 1}, 1, 0x81)),
              (Bytes{1, 0, 0, 1, 1, 1, 0, 1}));
    EXPECT_EQ(TextOf(PackedCodes({'a', 'b', 'a', 'b'}, 8, 0x88)), "abab");
    for (const std::uint8_t width : Bytes{9, 10, 11, 13, 16, 17, 24, 31}) {
        EXPECT_EQ(TextOf(PackedCodes({'a', 257, 'b', 258, 259}, width, width)), "aaabaabba")
            << int{width};
    }
}

struct Refused {
    const char* name;
    std::vector<std::uint32_t> codes;
    unsigned width = 12;
};

TEST(LzwDecompressor, RefusesCodesThatAreNotInTheDictionary) {
    std::vector<std::uint32_t> full = test::CodesOfRun(8'000'000);
    full.push_back(4095);
    const std::vector<Refused> cases = {
        {"256 first", {256}},
        {"257 first", {257}},
        {"4094 first", {4094}},
        {"4095 first", {4095}},
        {"256 later", {'a', 'b', 256}},
        {"one above the next", {'a', 258}},
        {"one above the next, later", {'a', 'b', 'c', 260}},
        {"4095 early", {'a', 4095}},
        {"4095 with a full dictionary", full},
        {"9 bits", {'a', 511}, 9},
        {"16 bits", {'a', 0xFFFF}, 16},
        {"31 bits", {'a', 0x7FFFFFFF}, 31},
        {"31 bits, first", {0x7FFFFFFF}, 31},
    };
    for (const Refused& refused : cases) {
        Bytes output = {1, 2};
        const auto flags = static_cast<std::uint8_t>(refused.width);
        EXPECT_FALSE(
            DecompressLzw(PackedCodes(refused.codes, refused.width, flags), kNoMinimum, output))
            << refused.name;
        EXPECT_EQ(output, (Bytes{1, 2})) << refused.name;
    }
}

TEST(LzwDecompressor, KnowsEachCodeAsSoonAsItIsAssigned) {
    EXPECT_EQ(TextOf(PackedCodes({'a', 257})), "aaa");
    EXPECT_EQ(TextOf(PackedCodes({'a', 'b', 'c', 259})), "abccc");
    EXPECT_EQ(TextOf(PackedCodes({'a', 'b', 257, 258, 259, 260})), "ababbaabbbaa");
}

TEST(LzwDecompressor, FullDictionaryKeepsItsLastCode) {
    // 3838 codes behind the first assign 257 to 4094.
    std::vector<std::uint32_t> codes(3838, 'a');
    codes.push_back('b');
    codes.push_back(4094);
    codes.push_back('c');
    codes.push_back(4094);
    EXPECT_EQ(TextOf(PackedCodes(codes)), std::string(3838, 'a') + "babcab");
}

TEST(LzwDecompressor, BitsBehindTheLastWholeCodeAreNotLookedAt) {
    EXPECT_EQ(TextOf(FromHex("1f9d8c41")), "");
    EXPECT_EQ(TextOf(FromHex("1f9d8c4100")), "A");
    EXPECT_EQ(TextOf(FromHex("1f9d8c41f0")), "A");
    EXPECT_EQ(TextOf(FromHex("1f9d9f410000")), "");
}

TEST(LzwDecompressor, EveryTruncationGivesTheFirstBytes) {
    const std::string text = "she sells sea shells by the sea shore";
    const Bytes whole = test::Compressed(BytesOf(text));
    for (std::size_t size = 3; size < whole.size(); ++size) {
        const std::string some =
            TextOf(Bytes(whole.begin(), whole.begin() + static_cast<int>(size)));
        EXPECT_LT(some.size(), text.size()) << size;
        EXPECT_TRUE(text.starts_with(some)) << size;
    }
}

TEST(LzwDecompressor, RefusesLessThanTheMinimum) {
    const Bytes input = PackedCodes({'a', 257, 'b'});
    for (const std::uint64_t minimum : std::vector<std::uint64_t>{0, 1, 3, 4}) {
        Bytes output = {9};
        EXPECT_TRUE(DecompressLzw(input, minimum, output)) << minimum;
        EXPECT_EQ(output, (Bytes{9, 'a', 'a', 'a', 'b'}));
    }
    for (const std::uint64_t minimum :
         std::vector<std::uint64_t>{5, 0x100000004, ~std::uint64_t{0}}) {
        Bytes output = {9};
        EXPECT_FALSE(DecompressLzw(input, minimum, output)) << minimum;
        EXPECT_EQ(output, Bytes{9});
    }
    for (const char* hex : {"", "1f9d8c", "4100"}) {
        Bytes output = {9};
        EXPECT_FALSE(DecompressLzw(FromHex(hex), 1, output)) << hex;
        EXPECT_EQ(output, Bytes{9});
    }
}

TEST(LzwDecompressor, RefusesMoreThan4GiBWithoutMakingRoomForThem) {
    const Bytes input = PackedCodes(test::CodesOfRun(std::uint64_t{1} << 32U));
    EXPECT_LT(input.size(), 2'000'000U);
    Bytes output = {1};
    const std::size_t capacity = output.capacity();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(DecompressLzw(input, kNoMinimum, output));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(output, Bytes{1});
    EXPECT_EQ(output.capacity(), capacity);
}

}  // namespace
}  // namespace sealkeeper
