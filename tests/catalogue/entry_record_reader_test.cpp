#include "catalogue/entry_record_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "catalogue/parsed_catalogue_support.h"
#include "catalogue/stored_catalogue_support.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::Compressed;
using test::DigestOf;
using test::PackedCodes;
using test::RecordOf;

// All fields of a reason, so that a failed comparison shows each.
using Told = std::vector<std::uint64_t>;

Told ToldBy(const InvalidReason& reason) {
    return {static_cast<std::uint64_t>(reason.field),
            static_cast<std::uint64_t>(reason.place),
            reason.offset,
            reason.found,
            reason.expected,
            reason.index};
}

// Why reading `compressed` fails; empty if it does not.
Told ReasonOf(const Bytes& compressed, std::uint32_t entryCount) {
    InvalidReason reason;
    auto records = EntryRecordReader::Open(compressed, entryCount, &reason);
    if (!records) {
        EXPECT_FALSE(EntryRecordReader::Open(compressed, entryCount).has_value());
        return ToldBy(reason);
    }
    RecordStart start;
    for (std::uint32_t i = 0; i < entryCount; ++i) {
        if (!records->ReadStart(start)) {
            return ToldBy(reason);
        }
        Bytes digests(static_cast<std::size_t>(start.DigestsBytes()));
        EXPECT_TRUE(records->ReadDigests(digests));
    }
    return {};
}

TEST(EntryRecordReader, GivesTheFieldsOfEachRecord) {
    const Bytes compressed = Compressed(test::ThreeRecords());
    auto records = EntryRecordReader::Open(compressed, 3);
    ASSERT_TRUE(records.has_value());
    RecordStart start;
    ASSERT_TRUE(records->ReadStart(start));
    EXPECT_EQ(start.FileSizeBytes(), 0U);
    EXPECT_EQ(start.NamePosition(), 0U);
    EXPECT_EQ(start.DigestCount(), 2U);
    EXPECT_EQ(start.DigestsBytes(), 64U);
    EXPECT_EQ(start.PathField()[0], 'b');
    Bytes digests(64);
    ASSERT_TRUE(records->ReadDigests(digests));
    EXPECT_EQ(digests[32], DigestOf("2")[0]);
    ASSERT_TRUE(records->ReadStart(start));
    EXPECT_EQ(start.NamePosition(), 4U);
    EXPECT_EQ(start.DigestsBytes(), 0U);
    ASSERT_TRUE(records->ReadStart(start));
    EXPECT_EQ(start.FileSizeBytes(), 5U);
    EXPECT_EQ(records->BytesLeft(), 32U);
    EXPECT_FALSE(records->ReadDigests(digests));
}

TEST(EntryRecordReader, TellsNothingOfWhatIsGood) {
    EXPECT_EQ(ReasonOf(Compressed(test::ThreeRecords()), 3), Told{});
    EXPECT_EQ(ReasonOf({}, 0), Told{});
}

Told Expected(InvalidField field, InvalidPlace place, const Told& numbers) {
    Told told = {static_cast<std::uint64_t>(field), static_cast<std::uint64_t>(place)};
    told.insert(told.end(), numbers.begin(), numbers.end());
    return told;
}

Told InCompressed(InvalidField field, const Told& numbers) {
    return Expected(field, InvalidPlace::CompressedBlock, numbers);
}

TEST(EntryRecordReader, TellsOfABlockThatIsNotCompressed) {
    constexpr InvalidField kField = InvalidField::BlockMagic;
    EXPECT_EQ(ReasonOf({}, 1), InCompressed(kField, {0, 0, 0x9D1F, 0}));
    EXPECT_EQ(ReasonOf({0x1F}, 1), InCompressed(kField, {0, 0x1F, 0x9D1F, 0}));
    EXPECT_EQ(ReasonOf({0x1F, 0x8B, 8}, 1), InCompressed(kField, {0, 0x8B1F, 0x9D1F, 0}));
}

TEST(EntryRecordReader, TellsOfAMissingCodeWidth) {
    const Told expected = InCompressed(InvalidField::CodeWidth, {2, 0, 0, 0});
    EXPECT_EQ(ReasonOf({0x1F, 0x9D}, 0), expected);
    EXPECT_EQ(ReasonOf({0x1F, 0x9D, 0x80, 1, 2}, 0), expected);
}

TEST(EntryRecordReader, TellsWhichCodeStandsForNothing) {
    constexpr InvalidField kField = InvalidField::Code;
    EXPECT_EQ(ReasonOf(PackedCodes({256}), 0), InCompressed(kField, {3, 256, 255, 0}));
    EXPECT_EQ(ReasonOf(PackedCodes({'a', 258}), 0), InCompressed(kField, {4, 258, 257, 1}));
    EXPECT_EQ(ReasonOf(PackedCodes({'a', 257, 4094}), 0), InCompressed(kField, {6, 4094, 258, 2}));
    std::vector<std::uint32_t> full(5000, 'a');
    full.push_back(4095);
    EXPECT_EQ(ReasonOf(PackedCodes(full), 0), InCompressed(kField, {7503, 4095, 4094, 5000}));
    full.back() = 256;
    EXPECT_EQ(ReasonOf(PackedCodes(full), 0), InCompressed(kField, {7503, 256, 4094, 5000}));
}

TEST(EntryRecordReader, TellsOfMoreBytesThanTheFormatHas) {
    const auto codes = test::CodesOfRun(std::uint64_t{test::kMax32} + 1);
    const std::uint64_t last = codes.size() - 1;
    EXPECT_EQ(
        ReasonOf(PackedCodes(codes), 0),
        InCompressed(InvalidField::UncompressedLength, {3 + last * 12 / 8, 0, test::kMax32, last}));
}

TEST(EntryRecordReader, TellsOfACountWithoutRoom) {
    const auto expected = [](std::uint64_t count, std::uint64_t room) {
        return Expected(InvalidField::EntryCount, InvalidPlace::File, {1048, count, room, 0});
    };
    EXPECT_EQ(ReasonOf(Compressed(Bytes(527)), 1), expected(1, 0));
    EXPECT_EQ(ReasonOf(Compressed(Bytes(1056)), 3), expected(3, 2));
    EXPECT_EQ(ReasonOf(Compressed(Bytes(1056)), test::kMax32), expected(test::kMax32, 2));
}

TEST(EntryRecordReader, TellsWhichRecordIsNotWhole) {
    // The digests of the first record take up the space of the second.
    const std::vector<Sha256Digest> digests(17, DigestOf(""));
    Bytes raw = RecordOf(0, u"a", digests);
    raw.resize(raw.size() + 20);
    EXPECT_EQ(ReasonOf(Compressed(raw), 2),
              Expected(InvalidField::Record, InvalidPlace::EntryBlock, {1072, 20, 528, 1}));
}

TEST(EntryRecordReader, TellsWhoseDigestsAreMissing) {
    Bytes raw = test::Joined({RecordOf(0, u"a", {DigestOf("")}), RecordOf(0, u"b", {})});
    raw.resize(raw.size() + 63);
    test::StoreAt<std::uint32_t>(raw, 560 + 524, 2);
    EXPECT_EQ(ReasonOf(Compressed(raw), 2),
              Expected(InvalidField::DigestCount, InvalidPlace::EntryBlock, {1084, 2, 1, 1}));
    test::StoreAt<std::uint32_t>(raw, 560 + 524, test::kMax32);
    EXPECT_EQ(
        ReasonOf(Compressed(raw), 2),
        Expected(InvalidField::DigestCount, InvalidPlace::EntryBlock, {1084, test::kMax32, 1, 1}));
}

}  // namespace
}  // namespace sealkeeper
