// Files that change after they were opened ahead, but before their turn.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_test_support.h"
#include "catalogue/hashing/chunks.h"
#include "catalogue/hashing/file_hasher.h"
#include "platform/text_encoding.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::BytesOf;
using test::Hex;
using test::PatternText;
using test::ReadFile;
using test::Sha256Hex;
using test::TempDirectory;

struct Change {
    const char* name;
    std::function<void(const TempDirectory& directory, const std::string& path)> make;
    // Empty if the file can no longer be opened.
    std::optional<std::string> content;
};

void PrintTo(const Change& change, std::ostream* stream) {
    *stream << change.name;
}

const std::string& Before() {
    static const std::string content = PatternText(1000);
    return content;
}

// All changes take the path, though this one knows it.
void RewriteInPlace(const TempDirectory& directory, const std::string& /*path*/) {
    directory.RewriteFile("changing", std::string(Before().size(), 'r'));
}

class ChangingFile : public testing::TestWithParam<Change> {
  protected:
    // Hashing the first file opens all the others ahead.
    void HashFirstFile() {
        static_cast<void>(hasher_.NextFile());
        EXPECT_EQ(Hex(hasher_.NextDigest().digest), Sha256Hex(BytesOf(Before())));
        ASSERT_EQ(openedCount_, paths_.size());
    }

    void ExpectNextFile(const std::string& content) {
        const FileToHash& file = hasher_.NextFile();
        ASSERT_NE(file.file, nullptr);
        EXPECT_EQ(file.sizeBytes, content.size());
        ASSERT_EQ(file.chunkCount, content.empty() ? 0U : 1U);
        if (file.chunkCount > 0) {
            EXPECT_EQ(Hex(hasher_.NextDigest().digest), Sha256Hex(BytesOf(content)));
        }
    }

    TempDirectory directory_;
    std::vector<std::string> paths_ = {
        directory_.WriteFile("first", Before()), directory_.WriteFile("second", Before()),
        directory_.WriteFile("changing", Before()), directory_.WriteFile("last", Before())};
    std::size_t openedCount_ = 0;
    FileHasher hasher_{paths_.size(), [this](std::size_t index) {
                           ++openedCount_;
                           return OpenCollectedFile(Utf8ToWide(paths_[index]));
                       }};
};

TEST_P(ChangingFile, IsHashedAsItIsWhenItsTurnComes) {
    HashFirstFile();
    GetParam().make(directory_, paths_[2]);
    ExpectNextFile(Before());
    EXPECT_EQ(openedCount_, paths_.size());
    if (GetParam().content) {
        ExpectNextFile(*GetParam().content);
    } else {
        EXPECT_EQ(hasher_.NextFile().file, nullptr);
    }
    ExpectNextFile(Before());
}

TEST_P(ChangingFile, MayBeGivenUp) {
    HashFirstFile();
    GetParam().make(directory_, paths_[2]);
    static_cast<void>(hasher_.NextFile());
    static_cast<void>(hasher_.NextFile());
    ExpectNextFile(Before());
}

INSTANTIATE_TEST_SUITE_P(
    EveryChange, ChangingFile,
    testing::Values(Change{"Shrunk",
                           [](const TempDirectory& /*directory*/, const std::string& path) {
                               std::filesystem::resize_file(path, 500);
                           },
                           PatternText(500)},
                    Change{"Emptied",
                           [](const TempDirectory& /*directory*/, const std::string& path) {
                               std::filesystem::resize_file(path, 0);
                           },
                           ""},
                    Change{"Grown",
                           [](const TempDirectory& directory, const std::string& /*path*/) {
                               directory.WriteFile("changing", PatternText(2000));
                           },
                           PatternText(2000)},
                    Change{"Removed",
                           [](const TempDirectory& /*directory*/, const std::string& path) {
                               std::filesystem::remove(path);
                           },
                           std::nullopt},
                    Change{"ReplacedByAnother",
                           [](const TempDirectory& directory, const std::string& path) {
                               std::filesystem::rename(
                                   directory.WriteFile("new", std::string(Before().size(), 'n')),
                                   path);
                           },
                           std::string(Before().size(), 'n')},
                    Change{"RewrittenInPlace", RewriteInPlace, std::string(Before().size(), 'r')}),
    [](const auto& instance) { return instance.param.name; });

TEST(AppearingFile, IsHashedWhenItIsThereByItsTurn) {
    const TempDirectory directory;
    const std::vector<std::string> paths = {directory.WriteFile("first", Before()),
                                            directory / "late",
                                            directory.WriteFile("last", "the last one")};
    FileHasher hasher(paths.size(), [&](std::size_t index) {
        return OpenCollectedFile(Utf8ToWide(paths[index]));
    });
    static_cast<void>(hasher.NextFile());
    EXPECT_TRUE(hasher.NextDigest().isRead);
    directory.WriteFile("late", "it is here");
    for (const std::string content : {"it is here", "the last one"}) {
        ASSERT_NE(hasher.NextFile().file, nullptr);
        EXPECT_EQ(Hex(hasher.NextDigest().digest), Sha256Hex(BytesOf(content)));
    }
}

// Files that change during their turn: after their status was checked, but before their digests are
// taken.
class FileChangingAtItsTurn : public testing::Test {
  protected:
    // Goes on to the second of three files, which was opened ahead, and then changes it.
    void ChangeAtItsTurn(const std::string& content) {
        directory_.WriteFile("second", content);
        static_cast<void>(hasher_.NextFile());
        EXPECT_EQ(Hex(hasher_.NextDigest().digest), Sha256Hex(BytesOf("1")));
        static_cast<void>(hasher_.NextFile());
        std::string changed = content;
        changed.back() = static_cast<char>(changed.back() ^ 1);
        directory_.RewriteFile("second", changed);
    }

    TempDirectory directory_;
    std::vector<std::string> paths_ = {directory_.WriteFile("first", "1"), directory_ / "second",
                                       directory_.WriteFile("third", "3")};
    FileHasher hasher_{paths_.size(), [this](std::size_t index) {
                           return OpenCollectedFile(Utf8ToWide(paths_[index]));
                       }};
};

// The file was read in full before the status check, so one check is enough.
TEST_F(FileChangingAtItsTurn, WasHashedBeforeIfItHasOneChunk) {
    const std::string content = PatternText(1'000'000);
    ChangeAtItsTurn(content);
    EXPECT_EQ(Hex(hasher_.NextDigest().digest), Sha256Hex(BytesOf(content)));
    EXPECT_FALSE(hasher_.HasFileChanged());
}

TEST_F(FileChangingAtItsTurn, HasChangedIfSomethingWasReadOtherwise) {
    ChangeAtItsTurn(PatternText(1'000'000));
    EXPECT_TRUE(hasher_.NextDigest().isRead);
    hasher_.NoteOtherReading();
    EXPECT_TRUE(hasher_.HasFileChanged());
    // A check of one file says nothing about the next.
    static_cast<void>(hasher_.NextFile());
    EXPECT_TRUE(hasher_.NextDigest().isRead);
    EXPECT_FALSE(hasher_.HasFileChanged());
}

TEST_F(FileChangingAtItsTurn, HasChangedIfItHasSeveralChunks) {
    ChangeAtItsTurn(PatternText(2 * kChunkBytes + 5));
    for (int chunk = 0; chunk < 3; ++chunk) {
        EXPECT_TRUE(hasher_.NextDigest().isRead);
    }
    EXPECT_TRUE(hasher_.HasFileChanged());
    static_cast<void>(hasher_.OpenFileAgain());
    for (int chunk = 0; chunk < 3; ++chunk) {
        EXPECT_TRUE(hasher_.NextDigest().isRead);
    }
    EXPECT_FALSE(hasher_.HasFileChanged());
}

// Some chunks were hashed ahead, others never are.
TEST(ChangingLargeFile, IsHashedAsItIsWhenItsTurnComes) {
    const TempDirectory directory;
    const std::vector<std::string> paths = {
        directory.WriteFile("first", Before()),
        directory.WriteFile("large", PatternText(6 * kChunkBytes)),
        directory.WriteFile("last", Before())};
    FileHasher hasher(paths.size(), [&](std::size_t index) {
        return OpenCollectedFile(Utf8ToWide(paths[index]));
    });
    static_cast<void>(hasher.NextFile());
    EXPECT_TRUE(hasher.NextDigest().isRead);
    std::filesystem::resize_file(paths[1], 2 * kChunkBytes + 1);
    const std::string content = ReadFile(paths[1]);
    ASSERT_EQ(hasher.NextFile().chunkCount, 3U);
    for (std::size_t at = 0; at < content.size(); at += kChunkBytes) {
        EXPECT_EQ(Hex(hasher.NextDigest().digest),
                  Sha256Hex(BytesOf(content.substr(at, kChunkBytes))));
    }
    static_cast<void>(hasher.NextFile());
    EXPECT_EQ(Hex(hasher.NextDigest().digest), Sha256Hex(BytesOf(Before())));
}

}  // namespace
}  // namespace sealkeeper
