#include "catalogue/catalogue_writer.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "platform/text_encoding.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/found_files.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::BytesOf;
using test::CapturedOutput;
using test::Hex;
using test::IsAllZero;
using test::kDigestOfHello;
using test::LoadKey;
using test::MakeUnusableKey;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::Sha256Hex;
using test::TempDirectory;
using test::Unseen;
using test::VerifySignature;
using test::WithoutProgressDots;

using Bytes = std::vector<std::uint8_t>;

Bytes RecordsIn(const EntryBlock& block) {
    const auto records = test::Decompressed(block.compressed);
    EXPECT_TRUE(records.has_value());
    EXPECT_EQ(records.value_or(Bytes{}).size(), block.uncompressedBytes);
    return records.value_or(Bytes{});
}

TEST(CatalogueWriter, RecordOfOneFile) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("bin/a.dat", "hello");
    EntryBlock block;
    EXPECT_EQ(BuildEntryBlock(Unseen({L"./bin/a.dat"}), {}, MakeChunkHasher(), block),
              ResultCode::Ok);
    EXPECT_EQ(block.entryCount, 1U);
    const Bytes records = RecordsIn(block);
    ASSERT_EQ(records.size(), 560U);
    const std::span<const std::uint8_t> record(records);
    EXPECT_EQ(Hex(record.first(12)), "050000000000000004000000");
    EXPECT_EQ(Hex(record.subspan(12, 18)), "620069006e002f0061002e00640061007400");
    EXPECT_TRUE(IsAllZero(record.subspan(30, 494)));
    EXPECT_EQ(Hex(record.subspan(524, 4)), "01000000");
    EXPECT_EQ(Hex(record.subspan(528)), kDigestOfHello);
}

TEST(CatalogueWriter, RecordsFollowEachOtherWithoutAGap) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("a", "hello");
    directory.WriteFile("c", "hello");
    EntryBlock block;
    CapturedOutput output;
    EXPECT_EQ(BuildEntryBlock(Unseen({L"a", L"b", L"c"}), {{L"c", L"d"}}, MakeChunkHasher(), block),
              ResultCode::Ok);
    EXPECT_EQ(WithoutProgressDots(output.Take()),
              "[Info] Hashing a...\n[Warn] [Warning] Empty file: 'b'.\n[Info] Hashing c...\n");
    EXPECT_EQ(block.entryCount, 3U);
    const Bytes records = RecordsIn(block);
    ASSERT_EQ(records.size(), 560U + 528U + 560U);
    const std::span<const std::uint8_t> bytes(records);
    EXPECT_EQ(Hex(bytes.subspan(560, 16)), "00000000000000000000000062000000");
    EXPECT_TRUE(IsAllZero(bytes.subspan(574, 514)));
    EXPECT_EQ(Hex(bytes.subspan(1088, 18)), "050000000000000000000000640000000000");
    EXPECT_EQ(Hex(bytes.subspan(1616)), kDigestOfHello);
}

// What the walk saw is reused only as long as it still holds.
TEST(CatalogueWriter, FilesThatChangedSinceTheyWereFoundAreHashedAsTheyAre) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    std::vector<FoundFile> found;
    for (const std::string name : {"a", "b", "c", "d"}) {
        directory.WriteFile(name, "before, longer");
        found.push_back({Utf8ToWide(name), StatusOfPath(name)});
    }
    directory.WriteFile("a", "hello");
    directory.WriteFile("b", "hello");
    std::filesystem::remove("c");
    std::filesystem::rename("b", "d");
    directory.WriteFile("b", "hello");
    EntryBlock block;
    EntryBlock fresh;
    const CapturedOutput quiet;
    EXPECT_EQ(BuildEntryBlock(found, {}, MakeChunkHasher(), block), ResultCode::Ok);
    EXPECT_EQ(BuildEntryBlock(Unseen(test::PathsOf(found)), {}, MakeChunkHasher(), fresh),
              ResultCode::Ok);
    const Bytes records = RecordsIn(block);
    EXPECT_EQ(records, RecordsIn(fresh));
    // The third file is empty by now. The fourth is the last record.
    ASSERT_EQ(records.size(), 560U + 560U + 528U + 560U);
    EXPECT_EQ(Hex(std::span(records).last(32)), kDigestOfHello);
}

TEST(CatalogueWriter, FirstFailureEndsTheBlock) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("z", "hello");
    EntryBlock block;
    CapturedOutput output;
    EXPECT_EQ(BuildEntryBlock(Unseen({L"", L"z"}), {}, MakeChunkHasher(), block),
              ResultCode::CatalogueIOError);
    EXPECT_EQ(output.Take(), "");
    EXPECT_EQ(block.entryCount, 0U);
}

TEST(CatalogueWriter, AliasThatDoesNotFitEndsTheBlock) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    EntryBlock block;
    CapturedOutput output;
    EXPECT_EQ(BuildEntryBlock(Unseen({L"a"}), {{L"a", std::wstring(128, L'b')}}, MakeChunkHasher(),
                              block),
              ResultCode::CatalogueError);
    EXPECT_EQ(output.Take(),
              "[Warn] [Warning] Empty file: 'a'.\n[Err!] Path too long for the catalogue: '" +
                  std::string(128, 'b') + "'.\n");
}

// The block of one file bin/a.dat that holds "hello".
EntryBlock ExampleBlock() {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("bin/a.dat", "hello");
    EntryBlock block;
    const CapturedOutput quiet;
    EXPECT_EQ(BuildEntryBlock(Unseen({L"./bin/a.dat"}), {}, MakeChunkHasher(), block),
              ResultCode::Ok);
    return block;
}

void ExpectSignedImage(const Bytes& image, const std::string& kind, std::size_t signatureBytes) {
    const std::span<const std::uint8_t> bytes(image);
    EXPECT_TRUE(IsAllZero(bytes.subspan(8 + signatureBytes, 1024 - signatureBytes)));
    Bytes unsignedImage = image;
    std::fill(unsignedImage.begin() + 8, unsignedImage.begin() + 1036, std::uint8_t{0});
    EXPECT_EQ(VerifySignature(kind, unsignedImage, bytes.subspan(8, signatureBytes)), 0);
}

TEST(CatalogueWriter, ImageOfOneFileWithARevocationList) {
    PrivateKey key;
    LoadKey("good", key);
    const Bytes crl(1000, 0xC5);
    Bytes image = {9, 9, 9};
    CapturedOutput output;
    EXPECT_EQ(BuildCatalogueImage(key.Get(), crl, ExampleBlock(), image), ResultCode::Ok);
    EXPECT_EQ(output.Take(), "");
    ASSERT_EQ(image.size(), 2184U);
    const std::span<const std::uint8_t> bytes(image);
    EXPECT_EQ(Hex(bytes.first(8)), "5156520004000100");
    EXPECT_EQ(Hex(bytes.subspan(1032, 20)), "00010000e8030000840000003002000001000000");
    EXPECT_EQ(Hex(bytes.subspan(1052, 1000)), Hex(crl));
    EXPECT_EQ(Hex(bytes.subspan(2052, 12)), "1f9d8c050000023110004000");
    // Made with tests/independent/fixed_width_lzw.py.
    EXPECT_EQ(Sha256Hex(bytes.subspan(2052)),
              "e3fd5cc787d061d40fe8f1f35c84580ff8e218786753aff7928f70affede3bda");
    ExpectSignedImage(image, "good", 256);
}

TEST(CatalogueWriter, ImageWithoutARevocationListSignedWithABigKey) {
    PrivateKey key;
    LoadKey("big-key", key);
    Bytes image;
    EXPECT_EQ(BuildCatalogueImage(key.Get(), {}, ExampleBlock(), image), ResultCode::Ok);
    ASSERT_EQ(image.size(), 1184U);
    EXPECT_EQ(Hex(std::span(image).subspan(1032, 20)), "0002000000000000840000003002000001000000");
    EXPECT_EQ(Hex(std::span(image).subspan(1052, 3)), "1f9d8c");
    ExpectSignedImage(image, "big-key", 512);
}

TEST(CatalogueWriter, ImageOfAnEmptyFile) {
    PrivateKey key;
    LoadKey("good", key);
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("empty", "");
    EntryBlock block;
    EXPECT_EQ(BuildEntryBlock(Unseen({L"./empty"}), {}, MakeChunkHasher(), block), ResultCode::Ok);
    Bytes image;
    EXPECT_EQ(BuildCatalogueImage(key.Get(), {}, block, image), ResultCode::Ok);
    ASSERT_EQ(image.size(), 1052U + 66U);
    EXPECT_EQ(Hex(std::span(image).subspan(1032, 20)), "0001000000000000420000001002000001000000");
    EXPECT_EQ(Sha256Hex(std::span(image).subspan(1052)),
              "d447417c500a89a7f53538c0088627b9fca39ebba82230f00f2f94087cefdf9c");
}

TEST(CatalogueWriter, SigningFailureIsPassedOnInSilence) {
    PrivateKey key;
    MakeUnusableKey(key);
    Bytes image;
    CapturedOutput output;
    EXPECT_EQ(BuildCatalogueImage(key.Get(), {}, EntryBlock{BytesOf("x"), 1, 1}, image),
              ResultCode::MbedTlsGenericError);
    EXPECT_EQ(BuildCatalogueImage(nullptr, {}, EntryBlock{BytesOf("x"), 1, 1}, image),
              ResultCode::MbedTlsRandNumGenError);
    EXPECT_EQ(output.Take(), "");
}

TEST(CatalogueWriter, WritesAndReplacesTheFile) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("\xC3\xA4.bin", "longer than the new content");
    CapturedOutput output;
    EXPECT_EQ(WriteCatalogueImage(Utf8ToWide(path), BytesOf("image")), ResultCode::Ok);
    EXPECT_EQ(output.Take(), "");
    EXPECT_EQ(ReadFile(path), "image");
}

TEST(CatalogueWriter, OutputThatCannotBeOpened) {
    const TempDirectory directory;
    for (const std::string& path : {directory.Path(), directory / "missing/\xC3\xA4.bin"}) {
        CapturedOutput output;
        EXPECT_EQ(WriteCatalogueImage(Utf8ToWide(path), BytesOf("x")),
                  ResultCode::CatalogueIOError);
        EXPECT_EQ(output.Take(), "[Err!] Failed to open file: '" + path + "'.\n");
    }
}

TEST(CatalogueWriter, FullDiskIsAWriteError) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "only Linux has /dev/full";
    }
    CapturedOutput output;
    EXPECT_EQ(WriteCatalogueImage(L"/dev/full", BytesOf("x")), ResultCode::CatalogueIOError);
    EXPECT_EQ(output.Take(), "[Err!] Error writing to file stream: '/dev/full'.\n");
}

TEST(CatalogueWriter, RejectsABlockBeyondItsLengthField) {
    constexpr std::size_t kMost = 0xFFFFFFFF;
    constexpr std::size_t kRecord = 528;
    // Only the size of the records matters, not their content.
    EntryBlock fits;
    fits.uncompressedBytes = kMost - kRecord;
    CapturedOutput output;
    EXPECT_EQ(BuildEntryBlock(Unseen({L"/no/such/file"}), {}, MakeChunkHasher(), fits),
              ResultCode::Ok);
    EntryBlock tooLarge;
    tooLarge.uncompressedBytes = kMost - kRecord + 1;
    EXPECT_EQ(BuildEntryBlock(Unseen({L"/no/such/file"}), {}, MakeChunkHasher(), tooLarge),
              ResultCode::CatalogueError);
    const std::string warning = "[Warn] [Warning] Empty file: '/no/such/file'.\n";
    EXPECT_EQ(output.Take(),
              warning + warning + "[Err!] Too large for the catalogue: the entry block.\n");
}

// Address space without memory behind it, as long as nothing touches it.
class ReservedBytes {
  public:
    explicit ReservedBytes(std::size_t sizeBytes)
        : sizeBytes_(sizeBytes),
          address_(mmap(nullptr, sizeBytes, PROT_NONE, MAP_PRIVATE | MAP_ANON, -1, 0)) {}
    ReservedBytes(const ReservedBytes&) = delete;
    ReservedBytes& operator=(const ReservedBytes&) = delete;
    ~ReservedBytes() { munmap(address_, sizeBytes_); }

    [[nodiscard]] bool IsReserved() const { return address_ != MAP_FAILED; }
    [[nodiscard]] std::span<const std::uint8_t> View() const {
        return {static_cast<const std::uint8_t*>(address_), sizeBytes_};
    }

  private:
    std::size_t sizeBytes_;
    void* address_;
};

TEST(CatalogueWriter, RejectsARevocationListBeyondItsLengthField) {
    const ReservedBytes list(std::size_t{1} << 32U);
    ASSERT_TRUE(list.IsReserved());
    PrivateKey key;
    std::vector<std::uint8_t> image;
    CapturedOutput output;
    EXPECT_EQ(BuildCatalogueImage(key.Get(), list.View(), EntryBlock{{0}, 1, 1}, image),
              ResultCode::CatalogueError);
    EXPECT_EQ(output.Take(),
              "[Err!] Too large for the catalogue: the certificate revocation list.\n");
}

}  // namespace
}  // namespace sealkeeper
