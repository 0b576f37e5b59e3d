#include "catalogue/hashing/chunked_file_reader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "platform/text_encoding.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::TempDirectory;

std::string ChunkText(const ChunkedFileReader& reader) {
    return {reader.Chunk().begin(), reader.Chunk().end()};
}

TEST(ChunkedFileReader, ReadsChunkByChunkAndAShortLastOne) {
    const TempDirectory directory;
    ChunkedFileReader reader(Utf8ToWide(directory.WriteFile("f", "abcdefgh")), 3);
    ASSERT_TRUE(reader.Open());
    EXPECT_TRUE(reader.Chunk().empty());
    ASSERT_TRUE(reader.AllocateBuffer(8));
    EXPECT_EQ(reader.Position(), 0U);
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "abc");
    EXPECT_EQ(reader.Position(), 3U);
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "def");
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "gh");
    EXPECT_EQ(reader.Position(), 8U);
}

TEST(ChunkedFileReader, ReadsNothingBeforeItIsOpen) {
    const TempDirectory directory;
    ChunkedFileReader reader(Utf8ToWide(directory.WriteFile("f", "abcdefgh")), 3);
    ASSERT_TRUE(reader.AllocateBuffer(8));
    EXPECT_FALSE(reader.ReadNextChunk());
    EXPECT_EQ(reader.Position(), 0U);
}

TEST(ChunkedFileReader, StopsAtTheExpectedSizeOfALongerFile) {
    const TempDirectory directory;
    ChunkedFileReader reader(Utf8ToWide(directory.WriteFile("f", "abcdefgh")), 3);
    ASSERT_TRUE(reader.Open());
    ASSERT_TRUE(reader.AllocateBuffer(4));
    ASSERT_TRUE(reader.ReadNextChunk());
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "d");
    EXPECT_EQ(reader.Position(), 4U);
}

TEST(ChunkedFileReader, FailsInsideTheChunkThatTheFileDoesNotFill) {
    const TempDirectory directory;
    ChunkedFileReader reader(Utf8ToWide(directory.WriteFile("f", "abcd")), 3);
    ASSERT_TRUE(reader.Open());
    ASSERT_TRUE(reader.AllocateBuffer(5));
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_FALSE(reader.ReadNextChunk());
    EXPECT_EQ(reader.Position(), 3U);
}

TEST(ChunkedFileReader, ReadsTheSameChunkAgainAfterAFailure) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("f", "abcd");
    ChunkedFileReader reader(Utf8ToWide(path), 3);
    ASSERT_TRUE(reader.Open());
    ASSERT_TRUE(reader.AllocateBuffer(6));
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(reader.LastReadBytes(), 3U);
    EXPECT_FALSE(reader.ReadNextChunk());
    EXPECT_EQ(reader.LastReadBytes(), 1U);
    EXPECT_TRUE(reader.Chunk().empty());
    directory.WriteFile("f", "abcdef");
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "def");
    EXPECT_EQ(reader.Position(), 6U);
}

TEST(ChunkedFileReader, PastTheLastChunkIsOneOfNoBytes) {
    const TempDirectory directory;
    ChunkedFileReader reader(Utf8ToWide(directory.WriteFile("f", "abc")), 3);
    ASSERT_TRUE(reader.Open());
    ASSERT_TRUE(reader.AllocateBuffer(3));
    ASSERT_TRUE(reader.ReadNextChunk());
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_TRUE(reader.Chunk().empty());
    EXPECT_EQ(reader.LastReadBytes(), 0U);
    EXPECT_EQ(reader.Position(), 3U);
}

TEST(ChunkedFileReader, ReadsFromThePositionSoughtUpToTheExpectedSize) {
    const TempDirectory directory;
    ChunkedFileReader reader(Utf8ToWide(directory.WriteFile("f", "abcdefgh")), 3);
    ASSERT_TRUE(reader.Open());
    ASSERT_TRUE(reader.AllocateBuffer(7));
    reader.SeekTo(5);
    EXPECT_EQ(reader.Position(), 5U);
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "fg");
    reader.SeekTo(1);
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "bcd");
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "efg");
}

TEST(ChunkedFileReader, RefusesABufferOfNothingAndASecondOne) {
    const TempDirectory directory;
    ChunkedFileReader reader(Utf8ToWide(directory.WriteFile("f", "abcd")), 3);
    ASSERT_TRUE(reader.Open());
    EXPECT_FALSE(reader.AllocateBuffer(0));
    EXPECT_TRUE(reader.AllocateBuffer(4));
    EXPECT_FALSE(reader.AllocateBuffer(4));
    ASSERT_TRUE(reader.ReadNextChunk());
    EXPECT_EQ(ChunkText(reader), "abc");
}

TEST(ChunkedFileReader, DoesNotOpenWhatIsNotThere) {
    const TempDirectory directory;
    ChunkedFileReader reader(Utf8ToWide(directory / "missing"), 3);
    EXPECT_FALSE(reader.Open());
}

TEST(ChunkedFileReader, OpensAPathOutsideAscii) {
    const TempDirectory directory;
    directory.WriteFile("\xC3\xA4\xF0\x9F\x8E\xAE", "x");
    ChunkedFileReader reader(Utf8ToWide(directory.Path()) + L"/\u00E4\U0001F3AE", 3);
    EXPECT_TRUE(reader.Open());
}

}  // namespace
}  // namespace sealkeeper
