#include "catalogue/hashing/game_file_index.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "catalogue/hashing/chunked_file_reader.h"
#include "catalogue/stored_catalogue_support.h"
#include "platform/text_encoding.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::TempDirectory;

// Files below a root, and an index for them.
class GameFileIndexTest : public testing::Test {
  protected:
    [[nodiscard]] std::wstring Root() const { return Utf8ToWide(root_.Path()) + L"/"; }

    // The path that the index returns for `path`; "" if it has none.
    [[nodiscard]] std::wstring Found(const std::wstring& path) const {
        std::wstring real = L"left over";
        const bool found = FindGameFile(index_, path, real);
        EXPECT_EQ(found, !real.empty()) << WideToUtf8(path);
        return real;
    }

    TempDirectory root_;
    GameFileIndex index_;
};

TEST_F(GameFileIndexTest, FindsFilesInWhateverCase) {
    root_.WriteFile("Data/Sub/A.Pak", "");
    root_.WriteFile("b.PAK", "");
    ASSERT_TRUE(BuildGameFileIndex(index_, Utf8ToWide(root_.Path())));
    EXPECT_EQ(index_.root, Root());
    EXPECT_EQ(index_.paths.size(), 2U);
    EXPECT_TRUE(index_.errorText.empty());
    for (const wchar_t* path : {L"Data/Sub/A.Pak", L"data/sub/a.pak", L"DATA/sUB/A.PAK"}) {
        EXPECT_EQ(Found(path), Root() + L"Data/Sub/A.Pak");
        EXPECT_EQ(Found(Root() + path), Root() + L"Data/Sub/A.Pak");
    }
    EXPECT_EQ(Found(L"B.pak"), Root() + L"b.PAK");
}

TEST_F(GameFileIndexTest, DoesNotFindWhatIsNotThere) {
    root_.WriteFile("dir/a", "");
    ASSERT_TRUE(BuildGameFileIndex(index_, Root()));
    for (const wchar_t* path : {L"", L"a", L"dir", L"dir/", L"dir/a/", L"dir/b", L"/dir/a",
                                L"./dir/a", L"dir//a", L"dir\\a"}) {
        EXPECT_EQ(Found(path), L"") << WideToUtf8(path);
    }
    // Only a leading root is removed, compared byte for byte.
    EXPECT_EQ(Found(L"dir/" + Root() + L"a"), L"");
    EXPECT_EQ(Found(Root() + Root() + L"dir/a"), L"");
    EXPECT_EQ(Found(Utf8ToWide(root_.Path()) + L"dir/a"), L"");
}

TEST_F(GameFileIndexTest, AnEmptyIndexFindsNothing) {
    EXPECT_EQ(Found(L"a"), L"");
    EXPECT_EQ(Found(L""), L"");
}

TEST_F(GameFileIndexTest, AnEmptyPathIsNotLookedUp) {
    index_.paths[L""] = L"x";
    EXPECT_EQ(Found(L""), L"");
}

TEST_F(GameFileIndexTest, KeyIsOfLowerCaseAndThePathAsOnDisk) {
    root_.WriteFile(
        "D/\xC3\x84"
        "B",
        "");
    ASSERT_TRUE(BuildGameFileIndex(index_, Root()));
    ASSERT_EQ(index_.paths.size(), 1U);
    // The "C" locale has lower case for ASCII only.
    EXPECT_EQ(index_.paths.begin()->first, L"d/\u00C4b");
    EXPECT_EQ(index_.paths.begin()->second, Root() + L"D/\u00C4B");
    EXPECT_EQ(Found(L"d/\u00C4b"), Root() + L"D/\u00C4B");
    EXPECT_EQ(Found(L"d/\u00E4b"), L"");
}

TEST_F(GameFileIndexTest, NamesBeyondABytesRange) {
    root_.WriteFile("\xE6\x97\xA5\xF0\x9F\x8E\xAE.BIN", "");
    ASSERT_TRUE(BuildGameFileIndex(index_, Root()));
    EXPECT_EQ(Found(L"\u65E5\U0001F3AE.bin"), Root() + L"\u65E5\U0001F3AE.BIN");
}

TEST_F(GameFileIndexTest, EveryKindOfFileIsEnteredAndNoLinkIsFollowed) {
    root_.WriteFile("dir/.hidden", "");
    fs::create_directory_symlink("dir", root_ / "LinkDir");
    fs::create_symlink("nowhere", root_ / "Dangling");
    ASSERT_EQ(mkfifo((root_ / "Fifo").c_str(), 0600), 0);
    fs::create_directory(root_ / "empty");
    ASSERT_TRUE(BuildGameFileIndex(index_, Root()));
    EXPECT_EQ(index_.paths.size(), 4U);
    for (const wchar_t* name : {L"dir/.hidden", L"LinkDir", L"Dangling", L"Fifo"}) {
        EXPECT_EQ(Found(name), Root() + name);
    }
}

TEST_F(GameFileIndexTest, TwoVersionsOfAFileAreAnError) {
    root_.WriteFile("Data/a.pak", "");
    root_.WriteFile("data/A.PAK", "");
    EXPECT_FALSE(BuildGameFileIndex(index_, Root()));
    ASSERT_EQ(index_.paths.size(), 1U);
    // Which of the two is the second depends on the order the system lists them in.
    const std::wstring first = index_.paths.at(L"data/a.pak");
    const std::wstring second = first == Root() + L"Data/a.pak" ? L"data/A.PAK" : L"Data/a.pak";
    EXPECT_EQ(index_.errorText, L"Two versions of the same file exist: " + Root() + second + L".");
    EXPECT_EQ(Found(L"DATA/A.PAK"), first);
}

TEST_F(GameFileIndexTest, AnErrorDeepDownEndsTheWholeWalk) {
    // Whichever directory comes first, the other is not searched.
    root_.WriteFile("d/sub/a", "");
    root_.WriteFile("d/sub/A", "");
    root_.WriteFile("e/sub/b", "");
    root_.WriteFile("e/sub/B", "");
    EXPECT_FALSE(BuildGameFileIndex(index_, Root()));
    EXPECT_EQ(index_.paths.size(), 1U);
    EXPECT_TRUE(index_.errorText.starts_with(L"Two versions of the same file exist: " + Root()));
}

TEST_F(GameFileIndexTest, WithAnErrorItIsNotBuiltAgain) {
    root_.WriteFile("a", "");
    index_.errorText = L"an earlier error";
    EXPECT_FALSE(BuildGameFileIndex(index_, Root()));
    EXPECT_EQ(index_.root, L"");
    EXPECT_TRUE(index_.paths.empty());
    EXPECT_EQ(index_.errorText, L"an earlier error");
}

TEST_F(GameFileIndexTest, WithoutARootItIsNotBuilt) {
    index_.root = L"earlier/";
    EXPECT_FALSE(BuildGameFileIndex(index_, L""));
    EXPECT_EQ(index_.root, L"earlier/");
    EXPECT_TRUE(index_.paths.empty());
    EXPECT_TRUE(index_.errorText.empty());
}

TEST_F(GameFileIndexTest, RootThatCannotBeRead) {
    root_.WriteFile("file", "");
    EXPECT_FALSE(BuildGameFileIndex(index_, Root() + L"missing"));
    EXPECT_FALSE(BuildGameFileIndex(index_, Root() + L"file"));
    EXPECT_TRUE(index_.paths.empty());
    EXPECT_TRUE(index_.errorText.empty());
    // The failure does not last.
    EXPECT_TRUE(BuildGameFileIndex(index_, Root()));
    EXPECT_EQ(index_.paths.size(), 1U);
}

TEST_F(GameFileIndexTest, DirectoryThatCannotBeReadIsLeftOut) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    root_.WriteFile("locked/a", "");
    root_.WriteFile("open/b", "");
    fs::permissions(root_ / "locked", fs::perms::none);
    EXPECT_TRUE(BuildGameFileIndex(index_, Root()));
    EXPECT_EQ(index_.paths.size(), 1U);
    EXPECT_EQ(Found(L"open/b"), Root() + L"open/b");
    fs::permissions(root_ / "locked", fs::perms::owner_all);
}

// Fills the process-wide index, and empties it afterwards.
class ReaderFallbackTest : public GameFileIndexTest {
  protected:
    ~ReaderFallbackTest() override { ProcessGameFileIndex() = {}; }
};

TEST_F(ReaderFallbackTest, TheProcesssIndexIsOneAndEmpty) {
    EXPECT_EQ(&ProcessGameFileIndex(), &ProcessGameFileIndex());
    EXPECT_TRUE(ProcessGameFileIndex().root.empty());
    EXPECT_TRUE(ProcessGameFileIndex().paths.empty());
    EXPECT_TRUE(ProcessGameFileIndex().errorText.empty());
}

TEST_F(ReaderFallbackTest, AnEmptyIndexOpensNothing) {
    root_.WriteFile("a", "");
    ChunkedFileReader reader(Root() + L"A", 3);
    EXPECT_FALSE(reader.Open());
    EXPECT_EQ(reader.Path(), Root() + L"A");
}

TEST_F(ReaderFallbackTest, ReaderTakesThePathOnDisk) {
    root_.WriteFile("Data/A.pak", "content");
    ASSERT_TRUE(BuildGameFileIndex(ProcessGameFileIndex(), Root()));
    for (const std::wstring& path : {Root() + L"data/a.PAK", std::wstring(L"DATA/A.PAK")}) {
        ChunkedFileReader reader(path, 7);
        ASSERT_TRUE(reader.Open());
        EXPECT_EQ(reader.Path(), Root() + L"Data/A.pak");
        ASSERT_TRUE(reader.AllocateBuffer(7));
        EXPECT_TRUE(reader.ReadNextChunk());
    }
}

TEST_F(ReaderFallbackTest, FileThatOpensIsNotLookedUp) {
    const std::string path = root_.WriteFile("a", "");
    ASSERT_TRUE(BuildGameFileIndex(ProcessGameFileIndex(), Root()));
    ProcessGameFileIndex().paths.at(L"a") = Root() + L"elsewhere";
    ChunkedFileReader reader(Utf8ToWide(path), 3);
    EXPECT_TRUE(reader.Open());
    EXPECT_EQ(reader.Path(), Utf8ToWide(path));
}

TEST_F(ReaderFallbackTest, FileOfTheIndexMayBeGone) {
    const std::string path = root_.WriteFile("a", "");
    ASSERT_TRUE(BuildGameFileIndex(ProcessGameFileIndex(), Root()));
    fs::remove(path);
    ChunkedFileReader reader(Root() + L"A", 3);
    EXPECT_FALSE(reader.Open());
}

TEST_F(ReaderFallbackTest, EntryOfAnotherCaseIsVerified) {
    root_.WriteFile("Data/A.pak", "hello");
    const auto entry = test::EntryOf(test::RecordOfFile(u"data/a.pak", "hello"));
    EXPECT_EQ(entry->VerifyCatalogueFile(entry->Path(), nullptr, nullptr),
              ResultCode::FileVerificationIOError);
    ASSERT_TRUE(BuildGameFileIndex(ProcessGameFileIndex(), Root()));
    EXPECT_EQ(entry->VerifyCatalogueFile(entry->Path(), nullptr, nullptr), ResultCode::Ok);
    root_.WriteFile("Data/A.pak", "jello");
    EXPECT_EQ(entry->VerifyCatalogueFile(entry->Path(), nullptr, nullptr),
              ResultCode::FileVerificationHashMismatch);
}

}  // namespace
}  // namespace sealkeeper
