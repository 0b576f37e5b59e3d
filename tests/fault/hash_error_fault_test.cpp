// Digests that the library fails to make.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/file_hashing.h"
#include "catalogue/hashing/chunks.h"
#include "catalogue/stored_catalogue_support.h"
#include "catalogue/stored_entry.h"
#include "fault/fault_injection.h"
#include "platform/text_encoding.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::ScopedFault;
using test::TempDirectory;

// A file of three chunks, hashed by the library.
class HashErrorFaults : public testing::Test {
  protected:
    static constexpr std::size_t kChunkCount = 3;

    HashErrorFaults()
        : content_(test::PatternText(kChunkCount * kChunkBytes)),
          path_(Utf8ToWide(directory_.WriteFile("a", content_))) {}

    ResultCode Verify(const StoredEntry& entry) const {
        const CapturedOutput quiet;
        FileHasher hasher(
            1, [&](std::size_t /*index*/) { return entry.OpenFile(path_); },
            MakeMbedTlsSha256Streams());
        return entry.VerifyNextFile(hasher, nullptr, nullptr);
    }

    TempDirectory directory_;
    std::string content_;
    std::wstring path_;
};

TEST_F(HashErrorFaults, EndsTheHashing) {
    for (std::size_t chunk = 0; chunk < kChunkCount; ++chunk) {
        const ScopedFault fault(Call::Sha256Finish, chunk, ScopedFault::Reach::Once);
        FileHasher hasher(
            1, [&](std::size_t /*index*/) { return OpenFileToHash(path_); },
            MakeMbedTlsSha256Streams());
        const FileToHash& file = hasher.NextFile();
        std::vector<Sha256Digest> digests;
        CapturedOutput output;
        EXPECT_EQ(HashFileChunks(hasher, file, path_, digests), ResultCode::CatalogueError);
        EXPECT_EQ(test::WithoutProgressDots(output.Take()),
                  "[Info] Hashing " + WideToUtf8(path_) + "...");
        EXPECT_EQ(digests.size(), chunk);
        EXPECT_TRUE(fault.Struck());
    }
}

TEST_F(HashErrorFaults, IsAMismatchUntilTheSecondReading) {
    const auto entry = test::EntryOf(test::RecordOfFile(u"a", content_));
    for (std::size_t chunk = 0; chunk < kChunkCount; ++chunk) {
        const ScopedFault fault(Call::Sha256Finish, chunk, ScopedFault::Reach::Once);
        EXPECT_EQ(Verify(*entry), ResultCode::Ok) << chunk;
        EXPECT_TRUE(fault.Struck());
    }
    std::string listed = content_;
    listed.back() ^= 1;
    const auto other = test::EntryOf(test::RecordOfFile(u"a", listed));
    const ScopedFault fault(Call::Sha256Finish, kChunkCount - 1, ScopedFault::Reach::Once);
    EXPECT_EQ(Verify(*other), ResultCode::FileVerificationHashMismatch);
}

}  // namespace
}  // namespace sealkeeper
