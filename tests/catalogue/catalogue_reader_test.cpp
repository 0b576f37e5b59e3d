#include "catalogue/catalogue_reader.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "catalogue/parsed_catalogue_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::CatalogueOf;
using test::CatalogueOfCompressed;
using test::DigestOf;
using test::Parse;
using test::Parsed;
using test::RecordOf;
using test::RecordOfFile;
using test::StoreAt;
using test::TempDirectory;
using test::ThreeRecords;

std::vector<std::wstring> PathsOf(const EntryList& entries) {
    std::vector<std::wstring> paths;
    for (const auto& entry : entries) {
        paths.push_back(entry->Path());
    }
    return paths;
}

TEST(CatalogueReader, ReadsTheRecordsOneAfterTheOther) {
    const Parsed parsed = Parse(CatalogueOf(ThreeRecords(), 3, {1, 2, 3}));
    EXPECT_EQ(parsed.code, ResultCode::Ok);
    EXPECT_EQ(parsed.crlBlock, (Bytes{1, 2, 3}));
    ASSERT_EQ(PathsOf(parsed.entries), (std::vector<std::wstring>{L"b", L"dir/none", L"a"}));
    EXPECT_EQ(parsed.entries[0]->DigestCount(), 2U);
    EXPECT_EQ(parsed.entries[0]->Digest(1)[0], DigestOf("2")[0]);
    EXPECT_EQ(parsed.entries[1]->DigestCount(), 0U);
    EXPECT_EQ(parsed.entries[1]->NamePosition(), 4U);
    EXPECT_EQ(parsed.entries[2]->FileSizeBytes(), 5U);
    EXPECT_EQ(test::Hex(parsed.entries[2]->Digest(0)), test::kDigestOfHello);
}

TEST(CatalogueReader, HeaderAlone) {
    const Bytes empty = CatalogueOfCompressed({}, 0);
    ASSERT_EQ(empty.size(), 1052U);
    const Parsed parsed = Parse(empty);
    EXPECT_EQ(parsed.code, ResultCode::Ok);
    EXPECT_TRUE(parsed.entries.empty());
    EXPECT_TRUE(parsed.crlBlock.empty());
    EXPECT_EQ(Parse(CatalogueOfCompressed({}, 1)).code, ResultCode::FileInvalid);
    EXPECT_EQ(Parse(CatalogueOfCompressed({}, test::kMax32)).code, ResultCode::FileInvalid);
}

TEST(CatalogueReader, EveryTruncationIsInvalid) {
    const Bytes whole = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    for (std::size_t size = 0; size < whole.size(); size += SEALKEEPER_TEST_STEP) {
        const Bytes some(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(Parse(some).code, ResultCode::FileInvalid) << size;
    }
    Bytes longer = whole;
    longer.push_back(0);
    EXPECT_EQ(Parse(longer).code, ResultCode::FileInvalid);
}

struct HeaderCase {
    const char* name;
    std::size_t offset;
    std::uint8_t value;
    ResultCode code;
};

TEST(CatalogueReader, HeaderFields) {
    const std::vector<HeaderCase> cases = {
        {"magic 0", 0, 0x50, ResultCode::FileInvalid},
        {"magic 1", 1, 0x57, ResultCode::FileInvalid},
        {"magic 2", 2, 0x72, ResultCode::FileInvalid},
        {"magic 3", 3, 0x01, ResultCode::FileInvalid},
        {"version 0", 4, 0, ResultCode::FileInvalid},
        {"version 3", 4, 3, ResultCode::FileInvalid},
        {"version 5", 4, 5, ResultCode::FileInvalid},
        {"version 0x104", 5, 1, ResultCode::FileInvalid},
        {"older layout", 6, 0, ResultCode::Ok},
        {"later layout", 7, 1, ResultCode::Ok},
        {"signature", 8, 1, ResultCode::Ok},
        {"end of the signature area", 1031, 1, ResultCode::Ok},
        {"signature length", 1035, 0xFF, ResultCode::Ok},
        {"raw length", 1047, 0xFF, ResultCode::Ok},
        {"raw length of 1", 1044, 1, ResultCode::Ok},
        {"entry count of 4", 1048, 4, ResultCode::FileInvalid},
        {"entry count above 24 bits", 1051, 1, ResultCode::FileInvalid},
    };
    for (const HeaderCase& changed : cases) {
        Bytes file = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
        file.at(changed.offset) = changed.value;
        EXPECT_EQ(Parse(file).code, changed.code) << changed.name;
    }
}

TEST(CatalogueReader, HeaderMustBeWholeWhateverTheFilesSize) {
    const Bytes whole = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    CatalogueHeader header;
    for (const std::size_t size : {0U, 3U, 4U, 1051U}) {
        EXPECT_EQ(ReadCatalogueHeader(std::span(whole).first(size), whole.size(), header),
                  ResultCode::FileInvalid)
            << size;
    }
    EXPECT_EQ(ReadCatalogueHeader(std::span(whole).first(1052), whole.size(), header),
              ResultCode::Ok);
}

struct HeaderReason {
    const char* name;
    std::size_t offset;
    std::uint8_t value;
    InvalidReason reason;
};

TEST(CatalogueReader, TellsWhichFieldOfTheHeaderIsWrong) {
    const Bytes whole = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    const std::uint64_t afterHeader = whole.size() - 1052;
    const std::vector<HeaderReason> cases = {
        {"magic", 3, 1, {InvalidField::Magic, InvalidPlace::File, 0, 0x01525651, 0x00525651}},
        {"version", 5, 1, {InvalidField::FormatVersion, InvalidPlace::File, 4, 0x0104, 4}},
        {"crl_length",
         1037,
         1,
         {InvalidField::BlockLengths, InvalidPlace::File, 1036, afterHeader + 256, afterHeader}},
        {"compressed_length",
         1043,
         1,
         {InvalidField::BlockLengths, InvalidPlace::File, 1036, afterHeader + 0x1000000,
          afterHeader}},
    };
    for (const HeaderReason& changed : cases) {
        Bytes file = whole;
        file.at(changed.offset) = changed.value;
        CatalogueHeader header;
        InvalidReason reason;
        EXPECT_EQ(ReadCatalogueHeader(file, file.size(), header, &reason), ResultCode::FileInvalid);
        EXPECT_EQ(reason.field, changed.reason.field) << changed.name;
        EXPECT_EQ(reason.place, InvalidPlace::File) << changed.name;
        EXPECT_EQ(reason.offset, changed.reason.offset) << changed.name;
        EXPECT_EQ(reason.found, changed.reason.found) << changed.name;
        EXPECT_EQ(reason.expected, changed.reason.expected) << changed.name;
    }
}

TEST(CatalogueReader, TellsThatTheHeaderIsCut) {
    const TempDirectory directory;
    const Bytes whole = CatalogueOf(ThreeRecords(), 3);
    for (const std::size_t size : {0U, 3U, 1051U}) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        auto opened = OpenSizedFile(directory.WriteFile("cut", test::TextOfBytes(cut)));
        ASSERT_TRUE(opened.has_value());
        CatalogueFile read;
        InvalidReason reason{InvalidField::Magic};
        EXPECT_EQ(ReadCatalogueFile(std::move(*opened), read, &reason), ResultCode::FileInvalid);
        EXPECT_EQ(reason.field, InvalidField::FileLength) << size;
        EXPECT_EQ(reason.offset, size);
        EXPECT_EQ(reason.found, size);
        EXPECT_EQ(reason.expected, 1052U);
    }
}

TEST(CatalogueReader, AllOfTheBodyMayBeRevocationList) {
    Bytes file = CatalogueOf({}, 0, {1, 2, 3});
    StoreAt<std::uint32_t>(file, test::kCrlLengthOffset, 6);
    StoreAt<std::uint32_t>(file, test::kCompressedLengthOffset, 0);
    const Parsed parsed = Parse(file);
    EXPECT_EQ(parsed.code, ResultCode::Ok);
    EXPECT_EQ(parsed.crlBlock, (Bytes{1, 2, 3, 0x1F, 0x9D, 0x8C}));
}

TEST(CatalogueReader, EntryCounts) {
    const Bytes raw = ThreeRecords();
    for (const std::uint32_t count : {0U, 1U, 2U, 3U}) {
        const Parsed parsed = Parse(CatalogueOf(raw, count));
        EXPECT_EQ(parsed.code, ResultCode::Ok) << count;
        EXPECT_EQ(parsed.entries.size(), count);
    }
    for (const std::uint32_t count : {4U, 0x80000000U, test::kMax32}) {
        EXPECT_EQ(Parse(CatalogueOf(raw, count)).code, ResultCode::FileInvalid) << count;
    }
}

TEST(CatalogueReader, BytesPastTheLastRecordAreNotLookedAt) {
    Bytes raw = ThreeRecords();
    raw.insert(raw.end(), 600, 0xFF);
    EXPECT_EQ(Parse(CatalogueOf(raw, 3)).entries.size(), 3U);
    EXPECT_EQ(Parse(CatalogueOf(raw, 4)).code, ResultCode::FileInvalid);
}

// The digests of one record may fill the space where the next record should be.
TEST(CatalogueReader, RecordThatIsNotThereIsNotTheOneBefore) {
    const Bytes raw = test::Joined(
        {RecordOf(0, u"a", std::vector<Sha256Digest>(17, DigestOf("x"))), RecordOf(0, u"b", {})});
    ASSERT_GE(raw.size(), 3 * test::kRecordBytes);
    EXPECT_EQ(Parse(CatalogueOf(raw, 2)).code, ResultCode::Ok);
    EXPECT_EQ(Parse(CatalogueOf(raw, 3)).code, ResultCode::FileInvalid);
}

TEST(CatalogueReader, ReadsFiles) {
    const TempDirectory directory;
    const Bytes whole = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    const std::string path = directory.WriteFile("a", test::TextOfBytes(whole));
    CatalogueFile read{{9}, {}};
    EXPECT_EQ(ReadCatalogueFile(path, read), ResultCode::Ok);
    EXPECT_EQ(read.bytes, whole);
    EXPECT_EQ(read.header.crlLength, 3U);
    EXPECT_EQ(read.header.compressedLength, whole.size() - 1055);
    EXPECT_EQ(read.header.entryCount, 3U);
    const Bytes header = CatalogueOfCompressed({}, 0);
    directory.WriteFile("a", test::TextOfBytes(header));
    EXPECT_EQ(ReadCatalogueFile(path, read), ResultCode::Ok);
    EXPECT_EQ(read.bytes, header);
    EXPECT_EQ(read.header.entryCount, 0U);
    for (const std::string& unread : {directory / "missing", directory.Path(), std::string()}) {
        EXPECT_EQ(ReadCatalogueFile(unread, read), ResultCode::CatalogueIOError);
    }
}

TEST(CatalogueReader, ReadsOnInAFileWhoseStartWasRead) {
    const TempDirectory directory;
    const Bytes whole = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    const std::string path = directory.WriteFile("a", test::TextOfBytes(whole));
    auto opened = OpenSizedFile(path);
    ASSERT_TRUE(opened.has_value());
    CatalogueFile read;
    ASSERT_TRUE(ReadOn(*opened, 1052, read.bytes));
    // From here on the name belongs to another file.
    std::filesystem::remove(path);
    directory.WriteFile("a", "another");
    EXPECT_EQ(ReadCatalogueFile(std::move(*opened), read), ResultCode::Ok);
    EXPECT_EQ(read.bytes, whole);
}

TEST(CatalogueReader, FileMustBeginWithAHeaderOfItsSize) {
    const TempDirectory directory;
    const Bytes whole = CatalogueOf(ThreeRecords(), 3, {1, 2, 3});
    std::vector<Bytes> files = {{}, Bytes(1051), Bytes(1052), whole, whole, whole, whole};
    files[3].push_back(0);
    files[4].pop_back();
    files[5][0] ^= 1U;
    files[6][4] ^= 1U;
    for (const Bytes& file : files) {
        CatalogueFile read;
        EXPECT_EQ(ReadCatalogueFile(directory.WriteFile("a", test::TextOfBytes(file)), read),
                  ResultCode::FileInvalid)
            << file.size();
    }
}

// A sparse file, larger than any memory.
TEST(CatalogueReader, HugeFileIsRefusedByItsHeader) {
    const TempDirectory directory;
    const std::string path =
        directory.WriteFile("a", test::TextOfBytes(CatalogueOf(ThreeRecords(), 3)));
    std::filesystem::resize_file(path, std::uint64_t{1} << 42U);
    CatalogueFile read;
    EXPECT_EQ(ReadCatalogueFile(path, read), ResultCode::FileInvalid);
    EXPECT_EQ(read.bytes.size(), 1052U);
}

TEST(CatalogueReader, EntriesOutliveTheFile) {
    EntryList entries;
    {
        CatalogueFile file{CatalogueOf(ThreeRecords(), 3), {}};
        ASSERT_EQ(ReadCatalogueHeader(file.bytes, file.bytes.size(), file.header), ResultCode::Ok);
        ASSERT_EQ(ReadCatalogueBody(file, entries), ResultCode::Ok);
        file.bytes.assign(file.bytes.size(), 0xFF);
    }
    entries.erase(entries.begin(), entries.begin() + 2);
    EXPECT_EQ(entries[0]->Path(), L"a");
    EXPECT_EQ(test::Hex(entries[0]->Digest(0)), test::kDigestOfHello);
}

}  // namespace
}  // namespace sealkeeper
