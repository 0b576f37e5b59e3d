// Files that change between being opened and the end of their last chunk.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_test_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "catalogue/stored_entry.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

// The first bytes of a file, mapped to be written.
class WritableMapping {
  public:
    WritableMapping(const std::string& path, std::size_t lengthBytes) : lengthBytes_(lengthBytes) {
        const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
        memory_ = mmap(nullptr, lengthBytes_, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
        close(descriptor);
    }
    ~WritableMapping() { munmap(memory_, lengthBytes_); }
    WritableMapping(const WritableMapping&) = delete;
    WritableMapping& operator=(const WritableMapping&) = delete;

    void Write(std::string_view content) const {
        ASSERT_NE(memory_, MAP_FAILED);
        std::memcpy(memory_, content.data(), std::min(content.size(), lengthBytes_));
    }

  private:
    std::size_t lengthBytes_;
    void* memory_ = nullptr;
};

class FileChangingWhileHashed : public testing::Test {
  protected:
    FileChangingWhileHashed() : here_(directory_.Path()) { directory_.WriteFile("a", "before"); }

    // Opens the file and then, the first `changeCount` times, rewrites it.
    OpenFile OpenAndRewrite(const std::function<FileToHash()>& open, std::size_t changeCount,
                            const std::string& content) {
        return [=, this](std::size_t /*index*/) {
            FileToHash file = open();
            if (openedCount_++ < changeCount) {
                directory_.RewriteFile("a", content);
            }
            return file;
        };
    }

    ResultCode Build(std::size_t changeCount, const std::string& content) {
        CapturedOutput output;
        FileHasher hasher(
            1, OpenAndRewrite([] { return OpenCollectedFile(L"./a"); }, changeCount, content));
        const ResultCode code = BuildCatalogueEntry(L"./a", hasher, entry_);
        output_ = test::WithoutProgressDots(output.Take());
        return code;
    }

    ResultCode Verify(std::size_t changeCount, const std::string& content) {
        const auto entry = test::EntryOf(test::RecordOfFile(u"a", "before"));
        const CapturedOutput quiet;
        FileHasher hasher(
            1, OpenAndRewrite([&] { return entry->OpenFile(L"a"); }, changeCount, content));
        return entry->VerifyNextFile(L"a", hasher, nullptr, nullptr);
    }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
    std::size_t openedCount_ = 0;
    CatalogueEntry entry_;
    std::string output_;
};

TEST_F(FileChangingWhileHashed, IsOpenedOnceWhereItDoesNotChange) {
    EXPECT_EQ(Build(0, ""), ResultCode::Ok);
    EXPECT_EQ(openedCount_, 1U);
    EXPECT_EQ(output_, "[Info] Hashing ./a...\n");
}

TEST_F(FileChangingWhileHashed, IsSealedAsItIsOnceItRests) {
    for (const std::string content : {"others", "and longer"}) {
        directory_.WriteFile("a", "before");
        openedCount_ = 0;
        EXPECT_EQ(Build(1, content), ResultCode::Ok) << content;
        EXPECT_EQ(openedCount_, 2U);
        EXPECT_EQ(entry_.fileSizeBytes, content.size());
        EXPECT_EQ(test::DigestTexts(entry_.digests),
                  std::vector<std::string>{test::Sha256Hex(test::BytesOf(content))});
        EXPECT_EQ(output_, "[Info] Hashing ./a...\n[Info] Hashing ./a...\n");
    }
}

TEST_F(FileChangingWhileHashed, MayBeEmptyThen) {
    // Its old content is gone, so the first read fails.
    EXPECT_EQ(Build(1, ""), ResultCode::CatalogueIOError);
    EXPECT_EQ(output_, "[Info] Hashing ./a...");
}

TEST_F(FileChangingWhileHashed, MayEndEarlyTheSecondTime) {
    CapturedOutput output;
    FileHasher hasher(1, [this](std::size_t /*index*/) {
        FileToHash file = OpenCollectedFile(L"./a");
        directory_.RewriteFile("a", openedCount_++ == 0 ? "others" : "");
        return file;
    });
    EXPECT_EQ(BuildCatalogueEntry(L"./a", hasher, entry_), ResultCode::CatalogueIOError);
    EXPECT_EQ(test::WithoutProgressDots(output.Take()),
              "[Info] Hashing ./a...\n[Info] Hashing ./a...");
}

TEST_F(FileChangingWhileHashed, EndsGenerateWhenItChangesBothTimes) {
    EXPECT_EQ(Build(2, "others"), ResultCode::CatalogueIOError);
    EXPECT_EQ(openedCount_, 2U);
    EXPECT_EQ(output_,
              "[Info] Hashing ./a...\n[Info] Hashing ./a...\n"
              "[Err!] File changed while it was being hashed: './a'.\n");
}

// A file that never existed counts as empty, but this one existed.
TEST_F(FileChangingWhileHashed, EndsGenerateWhenItIsGoneTheSecondTime) {
    CapturedOutput output;
    FileHasher hasher(1, [this](std::size_t /*index*/) {
        FileToHash file = OpenCollectedFile(L"./a");
        ++openedCount_;
        std::filesystem::remove("a");
        return file;
    });
    EXPECT_EQ(BuildCatalogueEntry(L"./a", hasher, entry_), ResultCode::CatalogueIOError);
    EXPECT_EQ(openedCount_, 2U);
    EXPECT_EQ(test::WithoutProgressDots(output.Take()),
              "[Info] Hashing ./a...\n"
              "[Err!] File changed while it was being hashed: './a'.\n");
}

TEST_F(FileChangingWhileHashed, IsVerifiedOnceMore) {
    EXPECT_EQ(Verify(0, ""), ResultCode::Ok);
    EXPECT_EQ(openedCount_, 1U);
    openedCount_ = 0;
    EXPECT_EQ(Verify(1, "before"), ResultCode::Ok);
    EXPECT_EQ(openedCount_, 2U);
}

TEST_F(FileChangingWhileHashed, IsNotIntactWhenItChangesBothTimes) {
    EXPECT_EQ(Verify(2, "before"), ResultCode::FileVerificationIOError);
    EXPECT_EQ(openedCount_, 2U);
}

// Writes through a mapping change the time stamp at most when they first make a page dirty.
TEST_F(FileChangingWhileHashed, IsNotNoticedWhereItsTimeStampStays) {
    const auto entry = test::EntryOf(test::RecordOfFile(u"a", "before"));
    const CapturedOutput quiet;
    const WritableMapping mapping("a", std::strlen("before"));
    const auto verify = [&] {
        mapping.Write("others");
        openedCount_ = 0;
        FileHasher hasher(1, [&](std::size_t /*index*/) {
            FileToHash file = entry->OpenFile(L"a");
            ++openedCount_;
            mapping.Write("before");
            return file;
        });
        return entry->VerifyNextFile(L"a", hasher, nullptr, nullptr);
    };
    EXPECT_EQ(verify(), ResultCode::Ok);
    // The system may clean the page in between.
    for (int tries = 1; openedCount_ != 1 && tries < 100; ++tries) {
        EXPECT_EQ(verify(), ResultCode::Ok);
    }
    EXPECT_EQ(openedCount_, 1U);
}

TEST_F(FileChangingWhileHashed, ThatDiffersTheSecondTimeIsAMismatch) {
    const auto entry = test::EntryOf(test::RecordOfFile(u"a", "before"));
    const CapturedOutput quiet;
    FileHasher hasher(1, [&](std::size_t /*index*/) {
        FileToHash file = entry->OpenFile(L"a");
        directory_.RewriteFile("a", openedCount_++ == 0 ? "before" : "others");
        return file;
    });
    EXPECT_EQ(entry->VerifyNextFile(L"a", hasher, nullptr, nullptr),
              ResultCode::FileVerificationHashMismatch);
    EXPECT_EQ(openedCount_, 2U);
}

TEST_F(FileChangingWhileHashed, ThatDoesNotMatchIsNotVerifiedAgain) {
    EXPECT_EQ(Verify(1, "others"), ResultCode::FileVerificationHashMismatch);
    EXPECT_EQ(openedCount_, 1U);
}

}  // namespace
}  // namespace sealkeeper
