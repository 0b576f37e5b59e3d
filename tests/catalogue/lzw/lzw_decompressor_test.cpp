#include "catalogue/lzw/lzw_decompressor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
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
using test::Decompressed;
using test::Hex;
using test::PackedCodes;

// The decompressed text. The test fails if `input` is refused.
std::string TextOf(const Bytes& input) {
    const auto output = Decompressed(input);
    EXPECT_TRUE(output.has_value()) << Hex(input).substr(0, 80);
    return output ? std::string(output->begin(), output->end()) : "refused";
}

Bytes FromHex(const std::string& hex) {
    Bytes bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(hex.substr(i, 2), nullptr, 16)));
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
        cases.push_back({"random of " + std::to_string(size), test::PseudoRandom(size, 0xFF)});
        cases.push_back({"few values of " + std::to_string(size), test::PseudoRandom(size, 3)});
        cases.push_back({"zeros of " + std::to_string(size), Bytes(size, 0)});
    }
    cases.push_back({"1 MiB of zeros", Bytes(1'048'576, 0)});
    cases.push_back({"1 MiB of few values", test::PseudoRandom(1'048'576, 1)});
    cases.push_back({"1 MiB at random", test::PseudoRandom(1'048'576, 0xFF)});
    for (std::size_t size = 300'000; size < 300'040; ++size) {
        cases.push_back({"records of " + std::to_string(size), test::RecordLikeBytes(size)});
    }
    cases.push_back({"20 MB of zeros", Bytes(20'000'000, 0)});
    // Strings grow up to 3839 bytes; then there is room for only one more.
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

TEST(LzwDecompressor, GivesTheSameInPiecesOfAnySize) {
    const Bytes whole = test::RecordLikeBytes(400'000);
    const Bytes compressed = test::Compressed(whole);
    for (const std::size_t size :
         std::vector<std::size_t>{1, 7, 528, 65'535, 65'536, 65'537, 399'999}) {
        auto block = LzwDecompressor::Open(compressed);
        ASSERT_TRUE(block.has_value());
        Bytes read;
        for (std::size_t left = whole.size(); left > 0;) {
            Bytes piece(std::min(size, left));
            ASSERT_TRUE(block->Read(piece)) << size;
            read.insert(read.end(), piece.begin(), piece.end());
            left -= piece.size();
            ASSERT_EQ(block->BytesLeft(), left) << size;
        }
        EXPECT_TRUE(read == whole) << size;
    }
}

TEST(LzwDecompressor, WithoutTheMagicThereIsNothing) {
    for (const char* hex :
         {"", "1f", "9d", "1e9d8c4100", "1f9c8c4100", "9d1f8c4100", "4100", "001f9d8c4100"}) {
        EXPECT_EQ(Decompressed(FromHex(hex)), Bytes{}) << hex;
    }
}

TEST(LzwDecompressor, RefusesCodesWithoutAWidth) {
    for (const char* hex : {"1f9d", "1f9d00", "1f9d804100", "1f9de0ffffff"}) {
        EXPECT_EQ(Decompressed(FromHex(hex)), std::nullopt) << hex;
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
        const auto flags = static_cast<std::uint8_t>(refused.width);
        EXPECT_EQ(Decompressed(PackedCodes(refused.codes, refused.width, flags)), std::nullopt)
            << refused.name;
    }
}

TEST(LzwDecompressor, KnowsEachCodeAsSoonAsItIsAssigned) {
    EXPECT_EQ(TextOf(PackedCodes({'a', 257})), "aaa");
    EXPECT_EQ(TextOf(PackedCodes({'a', 'b', 'c', 259})), "abccc");
    EXPECT_EQ(TextOf(PackedCodes({'a', 'b', 257, 258, 259, 260})), "ababbaabbbaa");
}

TEST(LzwDecompressor, FullDictionaryKeepsItsLastCode) {
    // After the first, 3838 codes assign 257 to 4094.
    std::vector<std::uint32_t> codes(3838, 'a');
    codes.push_back('b');
    codes.push_back(4094);
    codes.push_back('c');
    codes.push_back(4094);
    EXPECT_EQ(TextOf(PackedCodes(codes)), std::string(3838, 'a') + "babcab");
}

TEST(LzwDecompressor, BitsPastTheLastWholeCodeAreNotLookedAt) {
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

TEST(LzwDecompressor, ReadsNothingOfMoreThanIsLeft) {
    const Bytes input = PackedCodes({'a', 257, 'b'});
    auto block = LzwDecompressor::Open(input);
    ASSERT_TRUE(block.has_value());
    EXPECT_EQ(block->BytesLeft(), 4U);
    Bytes five(5, 9);
    EXPECT_FALSE(block->Read(five));
    EXPECT_EQ(five, Bytes(5, 9));
    EXPECT_EQ(block->BytesLeft(), 4U);
    Bytes three(3);
    EXPECT_TRUE(block->Read(three));
    EXPECT_EQ(three, BytesOf("aaa"));
    Bytes two(2, 9);
    EXPECT_FALSE(block->Read(two));
    EXPECT_EQ(two, Bytes(2, 9));
    Bytes one(1);
    EXPECT_TRUE(block->Read(one));
    EXPECT_EQ(one, BytesOf("b"));
    EXPECT_FALSE(block->Read(one));
    EXPECT_TRUE(block->Read({}));
    for (const char* hex : {"", "1f9d8c", "4100"}) {
        const Bytes nothing = FromHex(hex);
        auto empty = LzwDecompressor::Open(nothing);
        ASSERT_TRUE(empty.has_value()) << hex;
        EXPECT_EQ(empty->BytesLeft(), 0U) << hex;
        EXPECT_FALSE(empty->Read(one)) << hex;
    }
}

TEST(LzwDecompressor, RefusesMoreThan4GiB) {
    const Bytes input = PackedCodes(test::CodesOfRun(std::uint64_t{1} << 32U));
    EXPECT_LT(input.size(), 2'000'000U);
    const auto start = std::chrono::steady_clock::now();
    LzwFault fault;
    EXPECT_FALSE(LzwDecompressor::Open(input, &fault).has_value());
    EXPECT_EQ(fault.kind, LzwFault::Kind::TooManyBytes);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(LzwDecompressor, AcceptsTheMostThat32BitsCanSay) {
    const Bytes input = PackedCodes(test::CodesOfRun(0xFFFFFFFF));
    const auto block = LzwDecompressor::Open(input);
    ASSERT_TRUE(block.has_value());
    EXPECT_EQ(block->BytesLeft(), 0xFFFFFFFFU);
}

}  // namespace
}  // namespace sealkeeper
