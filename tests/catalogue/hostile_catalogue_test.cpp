#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "catalogue/lzw/lzw_compressor.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "catalogue/parsed_catalogue_support.h"
#include "catalogue/stored_catalogue_support.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::CatalogueOf;
using test::CatalogueOfCompressed;
using test::Joined;
using test::Parse;
using test::Parsed;
using test::RecordOf;
using test::RecordOfFile;
using test::StoreAt;
using test::ThreeRecords;

TEST(HostileCatalogue, LengthsAreAddedIn64Bits) {
    const Bytes file = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    const auto body = static_cast<std::uint32_t>(file.size() - 1052);
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> sums = {
        {test::kMax32, body + 1},
        {body + 1, test::kMax32},
        {0x80000000U, 0x80000000U + body},
        {test::kMax32, test::kMax32},
        {0, body + 1},
        {body + 1, 0},
        {0, body - 1},
        {test::kMax32, 0},
        {0, test::kMax32},
    };
    for (const auto& [crlLength, compressedLength] : sums) {
        Bytes changed = file;
        StoreAt(changed, test::kCrlLengthOffset, crlLength);
        StoreAt(changed, test::kCompressedLengthOffset, compressedLength);
        EXPECT_EQ(Parse(changed).code, ResultCode::FileInvalid)
            << crlLength << " + " << compressedLength;
    }
}

TEST(HostileCatalogue, DigestCounts) {
    for (const std::uint32_t count :
         {2U, 3U, 0x08000000U, 0x07FFFFFFU, 0x80000000U, test::kMax32}) {
        Bytes raw = RecordOfFile(u"a", "hello");
        StoreAt(raw, test::kDigestCountOffset, count);
        EXPECT_EQ(Parse(CatalogueOf(raw, 1)).code, ResultCode::FileInvalid) << count;
        raw.insert(raw.end(), 31, 0);
        EXPECT_EQ(Parse(CatalogueOf(raw, 1)).code, ResultCode::FileInvalid) << count;
        raw.push_back(0);
        EXPECT_EQ(Parse(CatalogueOf(raw, 1)).code,
                  count == 2 ? ResultCode::Ok : ResultCode::FileInvalid)
            << count;
    }
}

TEST(HostileCatalogue, DigestsThatReachIntoTheNextRecord) {
    Bytes raw = Joined({RecordOf(0, u"one", {}), RecordOf(0, u"two", {})});
    EXPECT_EQ(Parse(CatalogueOf(raw, 2)).code, ResultCode::Ok);
    StoreAt(raw, test::kDigestCountOffset, 1U);
    EXPECT_EQ(Parse(CatalogueOf(raw, 1)).code, ResultCode::Ok);
    EXPECT_EQ(Parse(CatalogueOf(raw, 2)).code, ResultCode::FileInvalid);
}

TEST(HostileCatalogue, EveryTruncationOfTheEntryBlockIsInvalid) {
    const Bytes raw = Joined({RecordOf(0, u"none", {}), RecordOfFile(u"a", "hello")});
    for (std::size_t size = 1; size < raw.size(); size += SEALKEEPER_TEST_STEP) {
        // One code per byte; no search is needed.
        const std::vector<std::uint32_t> some(raw.begin(),
                                              raw.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(Parse(CatalogueOfCompressed(test::PackedCodes(some), 2)).code,
                  ResultCode::FileInvalid)
            << size;
    }
    EXPECT_EQ(Parse(CatalogueOf(raw, 2)).code, ResultCode::Ok);
}

TEST(HostileCatalogue, EveryTruncationOfTheCompressedBlockIsInvalid) {
    const Bytes compressed = test::Compressed(RecordOfFile(u"a", "hello"));
    for (std::size_t size = 0; size < compressed.size(); ++size) {
        const Bytes some(compressed.begin(),
                         compressed.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(Parse(CatalogueOfCompressed(some, 1)).code, ResultCode::FileInvalid) << size;
    }
}

TEST(HostileCatalogue, BlockWithoutItsMagicHoldsNothing) {
    EXPECT_EQ(Parse(CatalogueOfCompressed({0x1F, 0x9E, 0x8C, 0x41, 0}, 0)).code, ResultCode::Ok);
    EXPECT_EQ(Parse(CatalogueOfCompressed({0x1F, 0x9E, 0x8C, 0x41, 0}, 1)).code,
              ResultCode::FileInvalid);
}

TEST(HostileCatalogue, CodeThatIsNotInTheDictionaryIsInvalidEvenWithoutEntries) {
    for (const std::uint32_t code : {256U, 258U, 4095U}) {
        EXPECT_EQ(Parse(CatalogueOfCompressed(test::PackedCodes({'a', code}), 0)).code,
                  ResultCode::FileInvalid)
            << code;
    }
}

TEST(HostileCatalogue, CodesWithoutAWidthAreInvalidEvenWithoutEntries) {
    EXPECT_EQ(Parse(CatalogueOfCompressed({0x1F}, 0)).code, ResultCode::Ok);
    EXPECT_EQ(Parse(CatalogueOfCompressed({0x1F, 0x9D}, 0)).code, ResultCode::FileInvalid);
    EXPECT_EQ(Parse(CatalogueOfCompressed({0x1F, 0x9D, 0x80}, 0)).code, ResultCode::FileInvalid);
    EXPECT_EQ(Parse(CatalogueOfCompressed({0x1F, 0x9D, 0x8C}, 0)).code, ResultCode::Ok);
}

TEST(HostileCatalogue, BlockBeyond4GiBIsInvalid) {
    const Bytes block = test::PackedCodes(test::CodesOfRun(std::uint64_t{1} << 32U));
    EXPECT_EQ(Parse(CatalogueOfCompressed(block, 1)).code, ResultCode::FileInvalid);
}

// Flips every single bit of a small catalogue. No such file may be read past its bounds, or
// accepted with a number of entries other than the one it states.
TEST(HostileCatalogue, EverySingleBitChangeIsReadOrInvalid) {
    const Bytes whole = CatalogueOf(RecordOfFile(u"a", "hello"), 1, {1, 2, 3});
    for (std::size_t bit = 0; bit < 8 * whole.size(); bit += SEALKEEPER_TEST_STEP) {
        const std::size_t offset = bit / 8;
        Bytes changed = whole;
        changed[offset] = static_cast<std::uint8_t>(changed[offset] ^ (1U << (bit % 8)));
        const Parsed parsed = Parse(changed);
        if (parsed.code == ResultCode::Ok) {
            EXPECT_EQ(parsed.entries.size(), changed[1048]) << offset;
        } else {
            EXPECT_EQ(parsed.code, ResultCode::FileInvalid) << offset;
        }
        if (offset < 6 || (offset >= 1036 && offset < 1044)) {
            EXPECT_EQ(parsed.code, ResultCode::FileInvalid) << offset;
        }
        if ((offset >= 6 && offset < 1036) || (offset >= 1044 && offset < 1048) ||
            (offset >= 1052 && offset < 1055)) {
            EXPECT_EQ(parsed.code, ResultCode::Ok) << offset;
        }
    }
}

}  // namespace
}  // namespace sealkeeper
