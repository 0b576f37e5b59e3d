#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "fault/fault_injection.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CallCount;
using test::CapturedOutput;
using test::EntryOf;
using test::ResetCallCount;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::TempDirectory;
using Reach = ScopedFault::Reach;

constexpr std::size_t kChunk = test::kStoredChunkBytes;
constexpr ResultCode kIoError = ResultCode::FileVerificationIOError;
constexpr ResultCode kHashMismatch = ResultCode::FileVerificationHashMismatch;
constexpr std::size_t kChunkCount = 3;

// A file of two whole chunks and five bytes, and its entry.
class FileVerificationFaults : public testing::Test {
  protected:
    FileVerificationFaults() : here_(directory_.Path()), content_(ThreeChunks()) {
        directory_.WriteFile("a", content_);
        entry_ = EntryOf(test::RecordOfFile(u"a", content_));
    }

    [[nodiscard]] ResultCode Verify(MismatchHandler handler = nullptr) const {
        CapturedOutput output;
        return entry_->VerifyCatalogueFile(L"a", handler, nullptr);
    }

    // Changes the first byte of each of `chunks` in the file.
    void ChangeChunks(const std::vector<std::size_t>& chunks) const {
        std::string changed = content_;
        for (const std::size_t chunk : chunks) {
            changed.at(chunk * kChunk) = static_cast<char>(changed.at(chunk * kChunk) ^ 1);
        }
        directory_.WriteFile("a", changed);
    }

    // Leaves one whole chunk and five bytes.
    void UseTwoChunks() {
        const std::string content = content_.substr(0, kChunk + 5);
        directory_.WriteFile("a", content);
        entry_ = EntryOf(test::RecordOfFile(u"a", content));
    }

    [[nodiscard]] static std::string ThreeChunks() { return test::PatternText(2 * kChunk + 5); }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
    std::string content_;
    std::shared_ptr<const StoredEntry> entry_;
};

bool AcceptEvery(const StoredEntry& /*entry*/, std::uint64_t /*positionBytes*/, void* /*context*/) {
    return true;
}

bool NeverAsked(const StoredEntry& /*entry*/, std::uint64_t /*positionBytes*/, void* /*context*/) {
    ADD_FAILURE() << "the handler was asked";
    return true;
}

TEST_F(FileVerificationFaults, EachChunkIsReadOnce) {
    ResetCallCount(Call::ReadChunk);
    EXPECT_EQ(Verify(), ResultCode::Ok);
    EXPECT_EQ(CallCount(Call::ReadChunk), kChunkCount);
}

TEST_F(FileVerificationFaults, ReadThatFailsOnceIsDoneAgainFromTheSamePlace) {
    for (std::size_t chunk = 0; chunk < kChunkCount; ++chunk) {
        for (const int delivered : {0, 3}) {
            const ScopedFault fault(Call::ReadChunk, chunk, Reach::Once, delivered);
            EXPECT_EQ(Verify(NeverAsked), ResultCode::Ok) << chunk;
            EXPECT_TRUE(fault.Struck());
            EXPECT_EQ(CallCount(Call::ReadChunk), kChunkCount + 1);
        }
    }
}

TEST_F(FileVerificationFaults, EachChunkHasARetryOfItsOwn) {
    UseTwoChunks();
    for (const int delivered : {0, 3}) {
        const ScopedFault fault(Call::ReadChunk, 0, Reach::EveryOther, delivered);
        EXPECT_EQ(Verify(NeverAsked), ResultCode::Ok);
        EXPECT_EQ(CallCount(Call::ReadChunk), 4U);
    }
}

TEST_F(FileVerificationFaults, ReadThatFailsTwiceIsAnError) {
    for (std::size_t chunk = 0; chunk < kChunkCount; ++chunk) {
        for (const int delivered : {0, 3}) {
            const ScopedFault fault(Call::ReadChunk, chunk, Reach::Onwards, delivered);
            EXPECT_EQ(Verify(AcceptEvery), kIoError) << chunk;
            // Later chunks are not read.
            EXPECT_EQ(CallCount(Call::ReadChunk), chunk + 2);
        }
    }
}

TEST_F(FileVerificationFaults, FileThatShrankIsReadTwice) {
    directory_.WriteFile("a", "1234");
    const auto entry = EntryOf(test::RecordOfFile(u"a", "12345"));
    const ScopedFault fault(Call::Stat, 0, Reach::Once, 5);
    ResetCallCount(Call::ReadChunk);
    EXPECT_EQ(entry->VerifyCatalogueFile(L"a", AcceptEvery, nullptr), kIoError);
    EXPECT_EQ(CallCount(Call::ReadChunk), 2U);
}

TEST_F(FileVerificationFaults, FileThatGrewMeanwhileIsCheckedOnceMore) {
    directory_.WriteFile("a", "123456");
    const auto entry = EntryOf(test::RecordOfFile(u"a", "12345"));
    const ScopedFault fault(Call::Stat, 0, Reach::Once, 5);
    EXPECT_EQ(entry->VerifyCatalogueFile(L"a", nullptr, nullptr),
              ResultCode::FileVerificationSizeMismatch);
}

TEST_F(FileVerificationFaults, NegativeSize) {
    for (const std::uint64_t size : {std::uint64_t{5}, ~std::uint64_t{0}, std::uint64_t{0}}) {
        const auto entry = EntryOf(test::RecordOf(size, u"a", {}));
        const ScopedFault fault(Call::Stat, 0, Reach::Once, -1);
        EXPECT_EQ(entry->VerifyCatalogueFile(L"a", nullptr, nullptr), kIoError);
        EXPECT_TRUE(fault.Struck());
    }
}

TEST_F(FileVerificationFaults, FileThatCannotBeOpened) {
    const ScopedFault fault(Call::Open);
    EXPECT_EQ(Verify(), kIoError);
    EXPECT_TRUE(fault.Struck());
}

TEST_F(FileVerificationFaults, WrongBytesOfOneReadAreReadAfresh) {
    for (std::size_t chunk = 0; chunk < kChunkCount; ++chunk) {
        const ScopedFault fault(Call::ReadChunkBytes, chunk, Reach::Once);
        EXPECT_EQ(Verify(NeverAsked), ResultCode::Ok) << chunk;
        EXPECT_TRUE(fault.Struck());
        EXPECT_EQ(CallCount(Call::ReadChunkBytes), kChunkCount + 1);
    }
}

TEST_F(FileVerificationFaults, WrongBytesOfBothReadsAreAMismatch) {
    const ScopedFault fault(Call::ReadChunkBytes);
    EXPECT_EQ(Verify(), kHashMismatch);
    EXPECT_EQ(CallCount(Call::ReadChunkBytes), kChunkCount + 1);
}

// Even if the digest that came with the error is the correct one.
TEST_F(FileVerificationFaults, SecondReadingThatCannotBeHashedIsAMismatch) {
    const ScopedFault bytes(Call::ReadChunkBytes, 0, Reach::Once);
    const ScopedFault hashing(Call::Sha256, 0, Reach::Once);
    EXPECT_EQ(Verify(), kHashMismatch);
    EXPECT_TRUE(hashing.Struck());
}

TEST_F(FileVerificationFaults, SecondReadingIsOfThePathGivenAndNotOfTheStoredOne) {
    directory_.WriteFile("b", content_);
    ChangeChunks({0});
    const ScopedFault bytes(Call::ReadChunkBytes, 0, Reach::Once);
    CapturedOutput output;
    EXPECT_EQ(entry_->VerifyCatalogueFile(L"b", NeverAsked, nullptr), ResultCode::Ok);
    EXPECT_TRUE(bytes.Struck());
}

// Verifies the files a and b, which held "first" and "second". The second one is opened while the
// first is hashed.
std::vector<ResultCode> VerifyBoth() {
    const std::vector<std::shared_ptr<const StoredEntry>> entries = {
        EntryOf(test::RecordOfFile(u"a", "first")), EntryOf(test::RecordOfFile(u"b", "second"))};
    const std::vector<std::wstring> paths = {L"a", L"b"};
    FileHasher hasher(paths.size(),
                      [&](std::size_t index) { return entries[index]->OpenFile(paths[index]); });
    const CapturedOutput quiet;
    std::vector<ResultCode> codes;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        codes.push_back(entries[i]->VerifyNextFile(paths[i], hasher, NeverAsked, nullptr));
    }
    return codes;
}

// It was hashed before the status check at its turn, but the bytes read again came after that
// check.
TEST_F(FileVerificationFaults, FileReadAfreshIsLookedAtAgain) {
    directory_.WriteFile("a", "first");
    directory_.WriteFile("b", "second");
    const ScopedFault bytes(Call::ReadChunkBytes, 1, Reach::Once);
    // Two checks come before: the last one of the first file, and the one at the second file's
    // turn.
    const ScopedFault change(Call::Fstat, 2, Reach::Once, 99);
    EXPECT_EQ(VerifyBoth(), (std::vector<ResultCode>{ResultCode::Ok, ResultCode::Ok}));
    EXPECT_TRUE(bytes.Struck());
    EXPECT_TRUE(change.Struck());
}

TEST_F(FileVerificationFaults, FileAheadOfAnotherSizeIsNotRead) {
    directory_.WriteFile("a", "first");
    directory_.WriteFile("b", "longer than the second");
    test::ResetCallCount(Call::ReadChunk);
    EXPECT_EQ(VerifyBoth(),
              (std::vector<ResultCode>{ResultCode::Ok, ResultCode::FileVerificationSizeMismatch}));
    EXPECT_EQ(CallCount(Call::ReadChunk), 1U);
}

TEST_F(FileVerificationFaults, FileAheadThatCannotBeOpenedIsNotRead) {
    directory_.WriteFile("a", "first");
    directory_.WriteFile("b", "second");
    const ScopedFault fault(Call::Open, 1);
    EXPECT_EQ(VerifyBoth(), (std::vector<ResultCode>{ResultCode::Ok, kIoError}));
    EXPECT_TRUE(fault.Struck());
}

TEST_F(FileVerificationFaults, ChunkAfterOneReadAfreshIsNotCompared) {
    ChangeChunks({1});
    {
        const ScopedFault fault(Call::ReadChunkBytes, 0, Reach::Once);
        EXPECT_EQ(Verify(), ResultCode::Ok);
        // Chunk 0 is read twice and chunk 1 once.
        EXPECT_EQ(CallCount(Call::ReadChunkBytes), kChunkCount + 1);
    }
    EXPECT_EQ(Verify(), kHashMismatch);
    ChangeChunks({1, 2});
    const ScopedFault fault(Call::ReadChunkBytes, 0, Reach::Once);
    EXPECT_EQ(Verify(), kHashMismatch);
}

// All chunks are read before the first is judged. After a recovery of chunk 0 come its second
// reading and that of chunk 1.
constexpr std::size_t kFirstReadOfLenientChunk = 1;

TEST_F(FileVerificationFaults, LenientChunkMayDeliverNothing) {
    UseTwoChunks();
    {
        const ScopedFault bytes(Call::ReadChunkBytes, 0, Reach::Once);
        const ScopedFault reading(Call::ReadChunk, kFirstReadOfLenientChunk, Reach::EveryOther);
        EXPECT_EQ(Verify(), ResultCode::Ok);
        EXPECT_EQ(CallCount(Call::ReadChunk), 4U);
    }
    // Single bytes are no chunk.
    const ScopedFault bytes(Call::ReadChunkBytes, 0, Reach::Once);
    const ScopedFault reading(Call::ReadChunk, kFirstReadOfLenientChunk, Reach::EveryOther, 3);
    EXPECT_EQ(Verify(), kIoError);
}

TEST_F(FileVerificationFaults, LenientChunkIsReadAgain) {
    const ScopedFault bytes(Call::ReadChunkBytes, 0, Reach::Once);
    const ScopedFault reading(Call::ReadChunk, kFirstReadOfLenientChunk, Reach::Once, 3);
    EXPECT_EQ(Verify(), ResultCode::Ok);
    EXPECT_EQ(CallCount(Call::ReadChunk), kChunkCount + 2);
}

struct SecondReaderFault {
    const char* name;
    Call call;
    std::size_t firstFailing;
};

TEST_F(FileVerificationFaults, SecondReaderThatFails) {
    ChangeChunks({0});
    const std::vector<SecondReaderFault> faults = {
        {"open", Call::Open, 1},
        {"read", Call::ReadChunk, kChunkCount},
    };
    for (const SecondReaderFault& failing : faults) {
        const ScopedFault fault(failing.call, failing.firstFailing, Reach::Once);
        EXPECT_EQ(Verify(NeverAsked), kIoError) << failing.name;
        EXPECT_TRUE(fault.Struck()) << failing.name;
    }
    EXPECT_EQ(Verify(), kHashMismatch);
}

// Runs `check` with each of its allocations failing in turn. An allocation for the file itself
// leads to an I/O error; any other failure gives `clean`, because the caller reports it. Returns
// the number of allocations for the file.
template <typename Check>
std::size_t FailEachAllocation(ResultCode clean, Check check) {
    constexpr std::size_t kMoreThanAnyCheckMakes = 100;
    std::size_t failedForTheFile = 0;
    for (std::size_t allocation = 0; allocation < kMoreThanAnyCheckMakes; ++allocation) {
        const CapturedOutput quiet;
        ScopedFault fault(Call::Allocation, allocation, Reach::Once);
        try {
            const ResultCode code = check();
            fault.Disarm();
            EXPECT_EQ(code, fault.Struck() ? kIoError : clean) << allocation;
            if (!fault.Struck()) {
                return failedForTheFile;
            }
            ++failedForTheFile;
        } catch (const std::bad_alloc&) {
            fault.Disarm();
        }
    }
    ADD_FAILURE() << "there is no end of allocations";
    return failedForTheFile;
}

TEST_F(FileVerificationFaults, NoMemoryToReadAChunkAgain) {
    EXPECT_EQ(Verify(), ResultCode::Ok);
    EXPECT_GE(FailEachAllocation(ResultCode::Ok,
                                 [this] {
                                     const ScopedFault reading(Call::ReadChunk, 0, Reach::Once);
                                     const ScopedFault bytes(Call::ReadChunkBytes, 0, Reach::Once);
                                     return entry_->VerifyCatalogueFile(L"a", nullptr, nullptr);
                                 }),
              1U);
}

TEST_F(FileVerificationFaults, NoMemoryToReadALaterChunkAgain) {
    EXPECT_EQ(Verify(), ResultCode::Ok);
    EXPECT_GE(FailEachAllocation(ResultCode::Ok,
                                 [this] {
                                     const ScopedFault reading(
                                         Call::ReadChunk, kFirstReadOfLenientChunk, Reach::Once);
                                     return entry_->VerifyCatalogueFile(L"a", nullptr, nullptr);
                                 }),
              1U);
}

TEST_F(FileVerificationFaults, FileThatWasReadOnceIsLookedAtOnce) {
    directory_.WriteFile("a", "first");
    directory_.WriteFile("b", "second");
    ResetCallCount(Call::Fstat);
    EXPECT_EQ(VerifyBoth(), (std::vector<ResultCode>{ResultCode::Ok, ResultCode::Ok}));
    EXPECT_EQ(CallCount(Call::Fstat), 2U);
}

TEST_F(FileVerificationFaults, FileThatCannotBeOpenedAgainTakesNoMemory) {
    ChangeChunks({0});
    const ScopedFault fault(Call::Open, 1, Reach::Once);
    test::ResetLargestAllocation();
    EXPECT_EQ(Verify(NeverAsked), kIoError);
    EXPECT_TRUE(fault.Struck());
    EXPECT_LT(test::LargestAllocation(), kChunk);
}

TEST_F(FileVerificationFaults, NoMemoryForTheSecondReader) {
    ChangeChunks({0});
    // Allocations made once per process must come before the count.
    EXPECT_EQ(Verify(), kHashMismatch);
    // Too long for a string without an allocation.
    const std::wstring path = L"././././././././././././a";
    // The second reader's path, the form of it for opening, and the buffer.
    EXPECT_GE(
        FailEachAllocation(kHashMismatch,
                           [&] { return entry_->VerifyCatalogueFile(path, nullptr, nullptr); }),
        3U);
}

// The chunk after a recovered one is not compared, but must still be read.
TEST_F(FileVerificationFaults, NoMemoryToReadWhatIsNotCompared) {
    ChangeChunks({0});
    constexpr std::size_t kAfterRecovered = 1;
    EXPECT_EQ(Verify(AcceptEvery), ResultCode::Ok);
    // The buffers of the second reader and of the first.
    EXPECT_GE(FailEachAllocation(ResultCode::Ok,
                                 [this] {
                                     const ScopedFault reading(Call::ReadChunk, kAfterRecovered,
                                                               Reach::Once);
                                     return entry_->VerifyCatalogueFile(L"a", AcceptEvery, nullptr);
                                 }),
              2U);
}

}  // namespace
}  // namespace sealkeeper
