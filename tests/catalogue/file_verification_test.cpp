#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "catalogue/stored_entry.h"
#include "platform/file_system.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::CapturedOutput;
using test::ChunkDigests;
using test::DigestOf;
using test::EntryOf;
using test::PatternText;
using test::RecordOf;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

constexpr std::size_t kChunk = test::kStoredChunkBytes;
constexpr ResultCode kIoError = ResultCode::FileVerificationIOError;
constexpr ResultCode kSizeMismatch = ResultCode::FileVerificationSizeMismatch;
constexpr ResultCode kHashMismatch = ResultCode::FileVerificationHashMismatch;

// Accepts the first chunks it is asked about, and records every question.
struct Asked {
    std::size_t accepts = 0;
    std::vector<const StoredEntry*> entries;
    std::vector<std::uint64_t> positions;
};

bool AcceptSome(const StoredEntry& entry, std::uint64_t positionBytes, void* context) {
    auto* asked = static_cast<Asked*>(context);
    asked->entries.push_back(&entry);
    asked->positions.push_back(positionBytes);
    return asked->positions.size() <= asked->accepts;
}

// Files in a fresh current directory, checked against entries.
class FileVerificationTest : public testing::Test {
  protected:
    FileVerificationTest() : here_(directory_.Path()) {}

    // Also checks that only progress dots are printed.
    static ResultCode Verify(const StoredEntry& entry, const std::wstring& path = L"a",
                             MismatchHandler handler = nullptr, void* context = nullptr) {
        CapturedOutput output;
        const ResultCode code = entry.VerifyCatalogueFile(path, handler, context);
        const std::string text = output.Take();
        EXPECT_EQ(text.find_first_not_of('.'), std::string::npos) << text;
        return code;
    }

    // Checks a file that holds `content` against the entry of a file that held `listed`.
    ResultCode VerifyContent(const std::string& content, const std::string& listed,
                             MismatchHandler handler = nullptr, void* context = nullptr) {
        directory_.WriteFile("a", content);
        return Verify(*EntryOf(test::RecordOfFile(u"a", listed)), L"a", handler, context);
    }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
};

std::string WithByteChanged(std::string text, std::size_t index) {
    text.at(index) = static_cast<char>(text.at(index) ^ 1);
    return text;
}

TEST_F(FileVerificationTest, FilesOfInterestingSizes) {
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, kChunk - 1, kChunk, kChunk + 1}) {
        const std::string content = PatternText(size);
        EXPECT_EQ(VerifyContent(content, content), ResultCode::Ok) << size;
        EXPECT_EQ(VerifyContent(content + "x", content), kSizeMismatch) << size;
        if (size > 0) {
            EXPECT_EQ(VerifyContent(content.substr(1), content), kSizeMismatch) << size;
            EXPECT_EQ(VerifyContent(WithByteChanged(content, size - 1), content), kHashMismatch)
                << size;
            EXPECT_EQ(VerifyContent(WithByteChanged(content, 0), content), kHashMismatch) << size;
        }
    }
}

TEST_F(FileVerificationTest, SizeComesBeforeTheChunks) {
    Asked asked{1, {}, {}};
    EXPECT_EQ(VerifyContent("jello!", "hello", AcceptSome, &asked), kSizeMismatch);
    EXPECT_TRUE(asked.positions.empty());
}

TEST_F(FileVerificationTest, SizesBeyond32BitsAreCompared) {
    directory_.WriteFile("a", "hello");
    EXPECT_EQ(Verify(*EntryOf(RecordOf(0x100000005, u"a", ChunkDigests("hello")))), kSizeMismatch);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(0xFFFFFFFFFFFFFFFF, u"a", ChunkDigests("hello")))),
              kSizeMismatch);
}

TEST_F(FileVerificationTest, EmptyFileHasNoChunksWhateverTheDigests) {
    directory_.WriteFile("a", "");
    EXPECT_EQ(Verify(*EntryOf(RecordOf(0, u"a", {DigestOf("wrong")}))), ResultCode::Ok);
}

TEST_F(FileVerificationTest, SizeOnlyStopsAfterTheSize) {
    directory_.WriteFile("a", "hello");
    constexpr auto kSizeOnly = StoredEntry::CheckExtent::SizeOnly;
    const std::vector<Sha256Digest> wrong = {DigestOf("wrong")};
    EXPECT_EQ(Verify(*EntryOf(RecordOf(5, u"a", wrong))), kHashMismatch);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(5, u"a", wrong), kSizeOnly)), ResultCode::Ok);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(6, u"a", wrong), kSizeOnly)), kSizeMismatch);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(5, u"a", wrong), kSizeOnly), L"missing"), kIoError);
}

TEST_F(FileVerificationTest, WithoutDigestsTheSizeDecides) {
    directory_.WriteFile("a", "hello");
    EXPECT_EQ(Verify(*EntryOf(RecordOf(5, u"a", {}))), ResultCode::Ok);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(4, u"a", {}))), kSizeMismatch);
}

TEST_F(FileVerificationTest, ChunksWithoutADigestAreNotRead) {
    const std::string content = PatternText(kChunk + 5);
    directory_.WriteFile("a", WithByteChanged(content, kChunk));
    EXPECT_EQ(Verify(*EntryOf(RecordOf(kChunk + 5, u"a", {ChunkDigests(content)[0]}))),
              ResultCode::Ok);
}

TEST_F(FileVerificationTest, DigestsWithoutAChunkAreThoseOfNoBytes) {
    directory_.WriteFile("a", "hello");
    const Sha256Digest hello = DigestOf("hello");
    const Sha256Digest nothing = DigestOf("");
    EXPECT_EQ(Verify(*EntryOf(RecordOf(5, u"a", {hello, nothing, nothing}))), ResultCode::Ok);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(5, u"a", {hello, nothing, hello}))), kHashMismatch);
    Asked asked{1, {}, {}};
    EXPECT_EQ(Verify(*EntryOf(RecordOf(5, u"a", {hello, hello})), L"a", AcceptSome, &asked),
              ResultCode::Ok);
    EXPECT_EQ(asked.positions, std::vector<std::uint64_t>{5});
}

TEST_F(FileVerificationTest, HandlerLearnsWhereTheChunkEnds) {
    const std::string listed = PatternText(2 * kChunk + 7);
    directory_.WriteFile("a", WithByteChanged(listed, kChunk));
    const auto entry = EntryOf(test::RecordOfFile(u"a", listed));
    Asked asked;
    EXPECT_EQ(Verify(*entry, L"a", AcceptSome, &asked), kHashMismatch);
    EXPECT_EQ(asked.positions, std::vector<std::uint64_t>{2 * kChunk});
    EXPECT_EQ(asked.entries, std::vector<const StoredEntry*>{entry.get()});
    directory_.WriteFile("a", WithByteChanged(listed, 2 * kChunk));
    Asked askedAtTheEnd{1, {}, {}};
    EXPECT_EQ(Verify(*entry, L"a", AcceptSome, &askedAtTheEnd), ResultCode::Ok);
    EXPECT_EQ(askedAtTheEnd.positions, std::vector<std::uint64_t>{2 * kChunk + 7});
}

// Four chunks, of which those in `changed` differ from the entry.
std::string ChangedChunks(const std::string& listed, const std::vector<std::size_t>& changed) {
    std::string content = listed;
    for (const std::size_t chunk : changed) {
        content = WithByteChanged(content, chunk * kChunk);
    }
    return content;
}

struct LenientCase {
    const char* name;
    std::vector<std::size_t> changed;
    std::size_t accepts;
    ResultCode code;
    std::vector<std::uint64_t> positions;
};

TEST_F(FileVerificationTest, ChunkAfterAnAcceptedOneIsNotCompared) {
    const std::string listed = PatternText(3 * kChunk + 1);
    constexpr std::uint64_t kEnd = 3 * kChunk + 1;
    const std::vector<LenientCase> cases = {
        {"chunk 1 passes unasked", {0, 1}, 1, ResultCode::Ok, {kChunk}},
        {"chunk 2 is compared again", {0, 1, 2}, 1, kHashMismatch, {kChunk, 3 * kChunk}},
        {"and may be accepted", {0, 1, 2, 3}, 2, ResultCode::Ok, {kChunk, 3 * kChunk}},
        {"a sound chunk uses the leniency up", {0, 2}, 1, kHashMismatch, {kChunk, 3 * kChunk}},
        {"the last chunk is compared", {1, 3}, 1, kHashMismatch, {2 * kChunk, kEnd}},
        {"the last chunk may pass", {2, 3}, 1, ResultCode::Ok, {3 * kChunk}},
        {"nothing is accepted", {0, 1}, 0, kHashMismatch, {kChunk}},
    };
    const auto entry = EntryOf(test::RecordOfFile(u"a", listed));
    for (const LenientCase& lenient : cases) {
        directory_.WriteFile("a", ChangedChunks(listed, lenient.changed));
        Asked asked{lenient.accepts, {}, {}};
        EXPECT_EQ(Verify(*entry, L"a", AcceptSome, &asked), lenient.code) << lenient.name;
        EXPECT_EQ(asked.positions, lenient.positions) << lenient.name;
    }
    directory_.WriteFile("a", ChangedChunks(listed, {0, 1}));
    EXPECT_EQ(Verify(*entry), kHashMismatch);
}

TEST_F(FileVerificationTest, WhatCannotBeOpened) {
    directory_.WriteFile("file", "hello");
    ASSERT_EQ(mkfifo("fifo", 0600), 0);
    fs::create_symlink("nowhere", "dangling");
    fs::create_symlink("fifo", "link_fifo");
    const auto empty = EntryOf(RecordOf(0, u"a", {}));
    for (const wchar_t* path :
         {L"", L"missing", L"file/x", L"fifo", L"link_fifo", L"dangling", L"FILE"}) {
        EXPECT_EQ(Verify(*empty, path), kIoError) << path;
    }
}

TEST_F(FileVerificationTest, DirectoryIsNoFile) {
    fs::create_directory("d");
    const auto size = static_cast<std::uint64_t>(StatusOfPath("d").sizeBytes);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(size + 1, u"d", {DigestOf("")})), L"d"), kSizeMismatch);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(size, u"d", {DigestOf("")})), L"d"), kIoError);
    // Even if only its size is checked.
    EXPECT_EQ(Verify(*EntryOf(RecordOf(size, u"d", {})), L"d"), kIoError);
}

TEST_F(FileVerificationTest, SocketCannotBeOpened) {
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(listener, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    address.sun_path[0] = 's';
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(3, u"a", {DigestOf("abc")})), L"s"), kIoError);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(0, u"a", {})), L"s"), kIoError);
    EXPECT_EQ(close(listener), 0);
}

TEST_F(FileVerificationTest, LinksAreFollowed) {
    directory_.WriteFile("file", "hello");
    fs::create_symlink("file", "link");
    EXPECT_EQ(Verify(*EntryOf(test::RecordOfFile(u"a", "hello")), L"link"), ResultCode::Ok);
}

TEST_F(FileVerificationTest, DeviceIsNoFileAndHasNoSize) {
    EXPECT_EQ(Verify(*EntryOf(RecordOf(0, u"a", {})), L"/dev/null"), kIoError);
    EXPECT_EQ(Verify(*EntryOf(RecordOf(1, u"a", {})), L"/dev/zero"), kSizeMismatch);
}

TEST_F(FileVerificationTest, ThePathGivenCountsAndNotTheStoredOne) {
    directory_.WriteFile("\xC3\xA4/other", "hello");
    directory_.WriteFile("a", "jello");
    const auto entry = EntryOf(test::RecordOfFile(u"a", "hello"));
    EXPECT_EQ(Verify(*entry, L"\u00E4/other"), ResultCode::Ok);
    EXPECT_EQ(Verify(*entry, L"a"), kHashMismatch);
}

TEST_F(FileVerificationTest, UnreadableFile) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    directory_.WriteFile("a", "hello");
    fs::permissions("a", fs::perms::none);
    EXPECT_EQ(Verify(*EntryOf(test::RecordOfFile(u"a", "hello"))), kIoError);
}

}  // namespace
}  // namespace sealkeeper
