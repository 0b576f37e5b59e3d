#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/hash_catalogue.h"
#include "catalogue/lzw/lzw_decompressor.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "fault/fault_injection.h"
#include "support/captured_output.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::Call;
using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::TempDirectory;

constexpr const char* kNoMemory = "[Err!] Not enough memory for the catalogue.\n";

Bytes SmallImage() {
    Bytes raw = test::RecordOfFile(u"a", "hello");
    const Bytes second = test::RecordOfFile(u"b", "world");
    raw.insert(raw.end(), second.begin(), second.end());
    return test::CatalogueOf(raw, 2, {1, 2, 3});
}

struct ReadingAttempt {
    ResultCode code;
    bool struck;
    std::string output;
};

// Calls `read` while allocation number `allocation` fails.
template <typename Read>
ReadingAttempt ReadWithFault(std::size_t allocation, Read read) {
    CapturedOutput output;
    ScopedFault fault(Call::Allocation, allocation, ScopedFault::Reach::Once);
    const ResultCode code = read();
    fault.Disarm();
    return {code, fault.Struck(), output.Take()};
}

TEST(ReadingMemoryFaults, EveryAllocationOfAListedCatalogueMayFail) {
    const Bytes image = SmallImage();
    HashCatalogue catalogue("");
    bool struck = true;
    for (std::size_t allocation = 0; struck; ++allocation) {
        ASSERT_LT(allocation, 1000U);
        Bytes given = image;
        EntryList entries = {test::EntryOf(test::RecordOf(0, u"old", {}))};
        const ReadingAttempt attempt = ReadWithFault(
            allocation, [&] { return catalogue.ReadCatalogue(std::move(given), entries); });
        struck = attempt.struck;
        EXPECT_EQ(attempt.code, struck ? ResultCode::CatalogueError : ResultCode::Ok) << allocation;
        EXPECT_EQ(attempt.output, struck ? kNoMemory : "") << allocation;
        if (!struck) {
            EXPECT_GT(allocation, 3U);
            EXPECT_EQ(entries.size(), 2U);
        } else {
            EXPECT_TRUE(entries.empty()) << allocation;
        }
    }
}

TEST(ReadingMemoryFaults, EveryAllocationOfAVerifiedCatalogueMayFail) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    Bytes image = SmallImage();
    test::SignImage(image, "good");
    directory.WriteFile("base.bin", test::TextOfBytes(image));
    directory.WriteFile("base.cer", test::ReadFile(test::CertificatePath("good")));
    const std::wstring path = L"base.bin";
    HashCatalogue catalogue(test::kTestProductId);
    bool struck = true;
    for (std::size_t allocation = 0; struck; ++allocation) {
        ASSERT_LT(allocation, 1000U);
        CatalogueContents contents;
        const ReadingAttempt attempt = ReadWithFault(
            allocation, [&] { return catalogue.ReadAndVerifyCatalogue(path, {}, {}, contents); });
        struck = attempt.struck;
        EXPECT_EQ(attempt.code, struck ? ResultCode::CatalogueError : ResultCode::Ok) << allocation;
        EXPECT_EQ(attempt.output, struck ? kNoMemory : "") << allocation;
        if (!struck) {
            EXPECT_GT(allocation, 5U);
            EXPECT_EQ(contents.entries.size(), 2U);
        } else {
            EXPECT_TRUE(contents.entries.empty()) << allocation;
        }
    }
}

// The strings of all codes. On the stack, they could end the process.
constexpr std::size_t kDictionaryBytes = 4096 * 8;

// The format itself is limited only by its 32-bit lengths.
TEST(ReadingMemoryFaults, RoomIsAskedForWithTheFirstByteAndForAPieceAlone) {
    constexpr std::uint64_t kLimit = std::numeric_limits<std::uint32_t>::max();
    // The bytes decoded while strings are added, of lengths 1 to 3839.
    constexpr std::size_t kGrowingBytes = 3839 * 3840 / 2;
    const Bytes atTheLimit = test::PackedCodes(test::CodesOfRun(kLimit));
    const Bytes beyond = test::PackedCodes(test::CodesOfRun(kLimit + 1));
    Bytes record(528);
    Bytes more(2 * kGrowingBytes);
    {
        test::ResetLargestAllocation();
        const ScopedFault fault(Call::Allocation, 2);
        EXPECT_FALSE(LzwDecompressor::Open(beyond).has_value());
        auto block = LzwDecompressor::Open(atTheLimit);
        ASSERT_TRUE(block.has_value());
        EXPECT_EQ(block->BytesLeft(), kLimit);
        EXPECT_EQ(test::CallCount(Call::Allocation), 2U);
        EXPECT_EQ(test::LargestAllocation(), kDictionaryBytes);
        EXPECT_THROW(static_cast<void>(block->Read(record)), std::bad_alloc);
        EXPECT_EQ(test::CallCount(Call::Allocation), 3U);
    }
    auto block = LzwDecompressor::Open(atTheLimit);
    ASSERT_TRUE(block.has_value());
    test::ResetCallCount(Call::Allocation);
    test::ResetLargestAllocation();
    EXPECT_TRUE(block->Read(record));
    EXPECT_TRUE(block->Read(more));
    EXPECT_EQ(test::CallCount(Call::Allocation), 2U);
    EXPECT_LE(test::LargestAllocation(), kGrowingBytes + 16);
    EXPECT_EQ(record, Bytes(528, 'A'));
}

Bytes BombAfter(const Bytes& record) {
    std::vector<std::uint32_t> codes(record.begin(), record.end());
    codes.push_back('A');
    // The strings added by these codes are never used again.
    const auto firstNew = static_cast<std::uint32_t>(256 + codes.size());
    for (std::uint32_t code = firstNew; code <= test::kLastCode; ++code) {
        codes.push_back(code);
    }
    const std::uint64_t longest = test::kLastCode - firstNew + 2;
    const std::uint64_t most = std::numeric_limits<std::uint32_t>::max() - longest * longest;
    codes.insert(codes.end(), most / longest, test::kLastCode);
    return test::PackedCodes(codes);
}

// Almost 4 GiB after one record, or after none.
TEST(ReadingMemoryFaults, BytesPastTheLastRecordTakeNoMemory) {
    constexpr std::size_t kMost = std::size_t{8} << 20U;
    const Bytes bomb = BombAfter(test::RecordOf(0, u"a", {}));
    HashCatalogue catalogue("");
    for (const std::uint32_t count : {0U, 1U}) {
        Bytes image = test::CatalogueOfCompressed(bomb, count);
        EntryList entries;
        test::ResetLargestAllocation();
        EXPECT_EQ(catalogue.ReadCatalogue(std::move(image), entries), ResultCode::Ok);
        EXPECT_EQ(entries.size(), count);
        EXPECT_LE(test::LargestAllocation(), count == 0 ? kDictionaryBytes : kMost);
    }
}

// Memory is never allocated on the word of a header or a record.
TEST(ReadingMemoryFaults, ClaimedNumbersTakeNoMemory) {
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    Bytes manyEntries = test::CatalogueOf({}, kMost);
    test::StoreAt(manyEntries, 1044, kMost);
    Bytes record = test::RecordOf(0, u"a", {});
    test::StoreAt(record, test::kDigestCountOffset, kMost);
    const Bytes manyDigests = test::CatalogueOf(record, 1);
    HashCatalogue catalogue("");
    const Bytes moreEntries = test::CatalogueOf(test::RecordOfFile(u"a", "hello"), 100'000);
    for (const Bytes& image : {manyEntries, manyDigests, moreEntries}) {
        EntryList entries;
        test::ResetLargestAllocation();
        EXPECT_EQ(catalogue.ReadCatalogue(image, entries), ResultCode::FileInvalid);
        EXPECT_LE(test::LargestAllocation(), std::max(image.size(), kDictionaryBytes));
    }
}

}  // namespace
}  // namespace sealkeeper
