#include "inspect/show/invalid_finding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/parsed_catalogue_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::CatalogueOf;
using test::ThreeRecords;
using Texts = std::vector<std::string>;

FileStart StartOf(const Bytes& bytes) {
    return {bytes, bytes.size()};
}

// A catalogue of three entries and a revocation list of three bytes, with `number` stored at
// `offset`.
Bytes Changed(std::size_t offset, std::uint32_t number) {
    Bytes file = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    test::StoreAt(file, offset, number);
    return file;
}

InvalidFinding HeaderFinding(const Bytes& file) {
    CatalogueHeader header;
    InvalidReason reason;
    EXPECT_EQ(ReadCatalogueHeader(file, file.size(), header, &reason), ResultCode::FileInvalid);
    return FindingOf(reason, StartOf(file));
}

TEST(InvalidFinding, HeaderThatIsCut) {
    Bytes file = CatalogueOf(ThreeRecords(), 3);
    file.resize(1045);
    const InvalidFinding finding = HeaderFinding(file);
    EXPECT_EQ(finding.field, "file length");
    EXPECT_EQ(finding.offset, 1045U);
    EXPECT_EQ(finding.message,
              "has 1,045 bytes, where a catalogue has 1,052 at least and a runtime.conf 1,108; it "
              "ends in the header's raw_length");
    EXPECT_EQ(HeaderFinding({7}).message,
              "has 1 byte, where a catalogue has 1,052 at least and a runtime.conf 1,108");
}

TEST(InvalidFinding, ShortRuntimeConfiguration) {
    const InvalidFinding finding = FindingOf(
        {InvalidField::FileLength, InvalidPlace::File, 1100, 1100, 1108}, StartOf(Bytes(1100, 7)));
    EXPECT_EQ(finding.field, "file length");
    EXPECT_EQ(finding.message,
              "does not begin as a catalogue does and, with 1,100 bytes, is too short for a "
              "runtime.conf, which has 1,108");
}

TEST(InvalidFinding, Magic) {
    const Bytes file(2000, 0x51);
    const InvalidFinding finding = FindingOf(
        {InvalidField::Magic, InvalidPlace::File, 0, 0x04030201, 0x00525651}, StartOf(file));
    EXPECT_EQ(finding.field, "magic");
    EXPECT_EQ(finding.offset, 0U);
    EXPECT_EQ(finding.message,
              "is 51 51 51 51, or 01 02 03 04 once the file is unscrambled as a runtime.conf, "
              "where a file of either kind begins with 51 56 52 00");
    EXPECT_EQ(finding.likelyCauses, Texts{});
}

TEST(InvalidFinding, Versions) {
    const InvalidFinding format = HeaderFinding(Changed(4, 0x00010007));
    EXPECT_EQ(format.field, "format version");
    EXPECT_EQ(format.offset, 4U);
    EXPECT_EQ(format.message, "is 7, where 4 is the only one known");
    const InvalidFinding settings = FindingOf(
        {InvalidField::SettingsVersion, InvalidPlace::File, 1032, 2, 1}, StartOf(Bytes(1108, 7)));
    EXPECT_EQ(settings.field, "version");
    EXPECT_EQ(settings.offset, 1032U);
    EXPECT_EQ(settings.message, "is 2, where 1 is the only one known");
}

TEST(InvalidFinding, LengthOfTheRevocationList) {
    const InvalidFinding changed = HeaderFinding(Changed(1036, 4));
    EXPECT_EQ(changed.field, "crl_length");
    EXPECT_EQ(changed.offset, 1036U);
    EXPECT_EQ(changed.message,
              "is 4, where it should be 3: an entry block of compressed_length stands at the end "
              "of the file");
    EXPECT_EQ(changed.likelyCauses, Texts{});
    Bytes cut = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    const std::size_t whole = cut.size();
    cut.resize(1054);
    const InvalidFinding shorter = HeaderFinding(cut);
    EXPECT_EQ(shorter.field, "crl_length");
    EXPECT_EQ(shorter.message, "is 3, where the file has 2 bytes for it");
    EXPECT_EQ(shorter.likelyCauses,
              Texts{"unless the field was changed, the file was cut off: " +
                    std::to_string(whole - 1054) + " bytes of its end got lost"});
}

TEST(InvalidFinding, LengthOfTheCompressedBlock) {
    const Bytes whole = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    const std::string length = std::to_string(whole.size() - 1055);
    const InvalidFinding changed = HeaderFinding(Changed(1040, 0xFFFFFFFF));
    EXPECT_EQ(changed.field, "compressed_length");
    EXPECT_EQ(changed.offset, 1040U);
    EXPECT_EQ(changed.message, "is 4,294,967,295, where the file has " + length + " bytes for it");
    Bytes longer = whole;
    longer.push_back(0);
    const InvalidFinding added = HeaderFinding(longer);
    EXPECT_EQ(added.field, "compressed_length");
    EXPECT_EQ(added.likelyCauses,
              Texts{"unless the field was changed, 1 byte were added to the file's end"});
}

TEST(InvalidFinding, PlacesInTheCompressedBlockAreThoseOfTheFile) {
    const Bytes file = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    const auto in = [&file](InvalidField field, std::uint64_t offset, std::uint64_t found,
                            std::uint64_t expected, std::uint64_t index = 0) {
        return FindingOf({field, InvalidPlace::CompressedBlock, offset, found, expected, index},
                         StartOf(file));
    };
    const InvalidFinding magic = in(InvalidField::BlockMagic, 0, 0x8B1F, 0x9D1F);
    EXPECT_EQ(magic.field, "entry block magic");
    EXPECT_EQ(magic.offset, 1055U);
    EXPECT_EQ(magic.message,
              "is 1F 8B, where a block begins with 1F 9D; so the block counts as empty, and "
              "entry_count is 3");
    const InvalidFinding width = in(InvalidField::CodeWidth, 2, 0, 0);
    EXPECT_EQ(width.field, "code width");
    EXPECT_EQ(width.offset, 1057U);
    const InvalidFinding first = in(InvalidField::Code, 3, 256, 255);
    EXPECT_EQ(first.field, "code");
    EXPECT_EQ(first.offset, 1058U);
    EXPECT_EQ(first.message, "number 0 is 256, where only 0 to 255 are assigned");
    EXPECT_EQ(in(InvalidField::Code, 4, 300, 257, 1).message,
              "number 1 is 300, where only 0 to 255 and 257 to 257 are assigned");
    EXPECT_EQ(in(InvalidField::UncompressedLength, 90, 0, 4'294'967'295, 58).message,
              "number 58 takes the entry block over 4,294,967,295 bytes, the most that raw_length "
              "can tell");
}

TEST(InvalidFinding, MissingBlock) {
    const Bytes file = test::CatalogueOfCompressed({}, 2);
    const InvalidFinding finding = FindingOf(
        {InvalidField::BlockMagic, InvalidPlace::CompressedBlock, 0, 0, 0x9D1F}, StartOf(file));
    EXPECT_EQ(finding.offset, 1052U);
    EXPECT_EQ(finding.message,
              "is missing, where a block begins with 1F 9D; so the block counts as empty, and "
              "entry_count is 2");
}

TEST(InvalidFinding, Records) {
    const Bytes file = CatalogueOf(ThreeRecords(), 3);
    const InvalidFinding count =
        FindingOf({InvalidField::EntryCount, InvalidPlace::File, 1048, 9, 3}, StartOf(file));
    EXPECT_EQ(count.field, "entry_count");
    EXPECT_EQ(count.offset, 1048U);
    EXPECT_EQ(count.message, "is 9, where the entry block has room for 3 records at most");
    EXPECT_FALSE(count.isInEntryBlock);
    const InvalidFinding record = FindingOf(
        {InvalidField::Record, InvalidPlace::EntryBlock, 1072, 20, 528, 1}, StartOf(file));
    EXPECT_EQ(record.field, "record");
    EXPECT_EQ(record.offset, 1072U);
    EXPECT_TRUE(record.isInEntryBlock);
    EXPECT_EQ(record.entryIndex, 1U);
    EXPECT_EQ(record.message,
              "of entry 2 of 3 has 20 bytes, where a record has 528 at least; or entry_count is "
              "too large");
    const InvalidFinding digests = FindingOf(
        {InvalidField::DigestCount, InvalidPlace::EntryBlock, 1084, 5, 1, 2}, StartOf(file));
    EXPECT_EQ(digests.field, "digest count");
    EXPECT_TRUE(digests.isInEntryBlock);
    EXPECT_EQ(digests.message, "of entry 3 of 3 is 5, where the entry block has room for 1");
}

TEST(InvalidFinding, OfAFileThatIsGoneOrChanged) {
    const test::TempDirectory directory;
    std::string failure;
    EXPECT_FALSE(FindingOfFile({}, directory / "gone", 5, failure).has_value());
    EXPECT_EQ(failure, "cannot be read: No such file or directory");
    const std::string path = directory.WriteFile("file", "12345");
    EXPECT_FALSE(FindingOfFile({}, path, 6, failure).has_value());
    EXPECT_EQ(failure, "changed while it was read");
    EXPECT_TRUE(
        FindingOfFile({InvalidField::FileLength, InvalidPlace::File, 5, 5, 1052}, path, 5, failure)
            .has_value());
}

}  // namespace
}  // namespace sealkeeper
