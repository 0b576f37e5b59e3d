#include "catalogue/lzw/lzw_compressor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/lzw/lzw_test_support.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;
using test::BytesOf;
using test::Compressed;
using test::Hex;
using test::Sha256Hex;

// Every expected value here was made with tests/independent/fixed_width_lzw.py.

struct SmallCase {
    const char* name;
    std::string input;
    const char* compressedHex;
};

const std::vector<SmallCase>& SmallCases() {
    static const std::vector<SmallCase> cases = {
        {"one byte, one code", "A", "1f9d8c4100"},
        {"one zero byte", std::string(1, '\0'), "1f9d8c0000"},
        {"two codes fill three bytes", "AB", "1f9d8c412004"},
        {"three codes leave half a byte", "ABC", "1f9d8c4120044300"},
        {"run of two", "AA", "1f9d8c411004"},
        {"run of three", "AAA", "1f9d8c411010"},
        {"run of four", "AAAA", "1f9d8c4110104100"},
        {"run of five", "AAAAA", "1f9d8c4110100101"},
        {"run of six", "AAAAAA", "1f9d8c4110100201"},
        {"run of ten", "AAAAAAAAAA", "1f9d8c411010023110"},
        {"code used right after it is assigned", "ABABABA", "1f9d8c412004013110"},
        {"highest byte", "\xFF\xFF\xFF", "1f9d8cff1010"},
        {"text", "TOBEORNOTTOBEORTOBEORNOT",
         "1f9d8c54f0044250044f20054ef0045410100351100a4110068110"},
    };
    return cases;
}

TEST(LzwCompressor, SmallInputs) {
    for (const SmallCase& small : SmallCases()) {
        EXPECT_EQ(Hex(Compressed(BytesOf(small.input))), small.compressedHex) << small.name;
    }
}

TEST(LzwCompressor, AsksForRoomInFewPieces) {
    Bytes output;
    LzwCompressor compressor(output);
    compressor.Append(test::PseudoRandom(1000, 0xFF));
    compressor.Finish();
    EXPECT_GT(output.size(), 1000U);
    EXPECT_LT(output.capacity(), 200'000U);
}

struct LargeCase {
    const char* name;
    Bytes input;
    std::size_t compressedBytes;
    const char* compressedSha256;
};

Bytes EveryByte() {
    Bytes bytes(256);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(i);
    }
    return bytes;
}

Bytes Repeated(const Bytes& head, const Bytes& tail, int times) {
    Bytes bytes = head;
    for (int i = 0; i < times; ++i) {
        bytes.insert(bytes.end(), tail.begin(), tail.end());
    }
    return bytes;
}

// `count` pseudo-random bytes, then the last 40 of them thirty times.
Bytes EndingInRepetition(std::size_t count) {
    const Bytes head = test::PseudoRandom(count, 0xFF);
    return Repeated(head, Bytes(head.end() - 40, head.end()), 30);
}

TEST(LzwCompressor, LargeInputs) {
    const Bytes random = test::PseudoRandom(20000, 0xFF);
    const std::vector<LargeCase> cases = {
        {"every byte", EveryByte(), 387,
         "1b0e28d8db6d5e5d045885be6c22f62541dd9a325fa33c35e8cf398dc2243a1d"},
        {"long run", Bytes(100000, 0), 674,
         "924cbe1281b13b9924ca87bbe2ae0d4bf08b03bfbadc7292da0a8abea4c71fc5"},
        {"full dictionary stays frozen", Repeated(random, random, 1), 54294,
         "bac769ac5f31e201cf96ebc252ca66797998feb1f83ac703b651d032278a1e8a"},
        {"full dictionary of long strings", test::PseudoRandom(300000, 3), 83349,
         "67ad7eed12a3f926c4dba99298e42d3425d8b9f9ddeba89b55e03013ba6ead16"},
        // After 3940 bytes the highest code is 4093. After 3941 it is 4094, the last.
        {"repetition with one code left", EndingInRepetition(3940), 6705,
         "dfd6125a9b012ba99ebadb315762a51d8df86524f627e1df474379308acb975c"},
        {"repetition with no code left", EndingInRepetition(3941), 6617,
         "681cb39f2d5ec75b344342b759b54a376c7e840a38298ca9afb3c3ef5dac7c31"},
    };
    for (const LargeCase& large : cases) {
        const Bytes compressed = Compressed(large.input);
        EXPECT_EQ(compressed.size(), large.compressedBytes) << large.name;
        EXPECT_EQ(Sha256Hex(compressed), large.compressedSha256) << large.name;
    }
}

void ExpectPlainlyFoundCodes(const Bytes& input, const std::string& name) {
    EXPECT_TRUE(Compressed(input) == test::PackedCodes(test::CodesOf(input))) << name;
}

TEST(LzwCompressor, RunsOfZerosWhereverTheyStand) {
    for (std::size_t run = 0; run <= 40; ++run) {
        for (std::size_t before = 0; before < 10; ++before) {
            Bytes input(before, 'x');
            input.insert(input.end(), run, 0);
            for (const std::size_t after : std::vector<std::size_t>{0, 1, 9}) {
                Bytes whole = input;
                whole.insert(whole.end(), after, 'y');
                if (!whole.empty()) {
                    ExpectPlainlyFoundCodes(Repeated(whole, whole, 5),
                                            std::to_string(before) + ", " + std::to_string(run) +
                                                ", " + std::to_string(after));
                }
            }
        }
    }
}

// They fill the dictionary after 7.4 million bytes.
TEST(LzwCompressor, ZerosAloneUntilTheDictionaryIsFull) {
    for (const std::size_t size : std::vector<std::size_t>{7'370'000, 7'500'000, 7'500'001}) {
        ExpectPlainlyFoundCodes(Bytes(size, 0), std::to_string(size));
    }
}

TEST(LzwCompressor, BytesAsAnEntryBlockHasThem) {
    for (const std::size_t size : std::vector<std::size_t>{500, 30'000, 65'536, 2'000'003}) {
        ExpectPlainlyFoundCodes(test::RecordLikeBytes(size), std::to_string(size));
    }
}

TEST(LzwCompressor, BytesThatGrow) {
    // Larger than the input, so the output buffer cannot have been sized after it.
    const Bytes input = test::PseudoRandom(1'000'000, 0xFF);
    EXPECT_GT(Compressed(input).size(), input.size());
    ExpectPlainlyFoundCodes(input, "random");
}

TEST(LzwCompressor, AppendsToWhatTheBufferHolds) {
    Bytes output = {1, 2};
    LzwCompressor compressor(output);
    compressor.Append(BytesOf("A"));
    compressor.Finish();
    EXPECT_EQ(Hex(output), "01021f9d8c4100");
}

// Cut where no record ends: inside a string, inside a run of zeros, and into empty parts.
TEST(LzwCompressor, ItMakesNoDifferenceHowTheInputIsCut) {
    Bytes input = test::RecordLikeBytes(40'000);
    input.insert(input.begin(), 5'000, 0);
    input.insert(input.end(), 3'000, 0);
    const Bytes expected = Compressed(input);
    for (const std::size_t pieceBytes : std::vector<std::size_t>{1, 2, 7, 8, 9, 33, 528, 4'999}) {
        Bytes output;
        LzwCompressor compressor(output);
        for (std::size_t start = 0; start < input.size(); start += pieceBytes) {
            compressor.Append({});
            compressor.Append(
                std::span(input).subspan(start, std::min(pieceBytes, input.size() - start)));
        }
        compressor.Finish();
        EXPECT_EQ(output, expected) << pieceBytes;
    }
}

}  // namespace
}  // namespace sealkeeper
