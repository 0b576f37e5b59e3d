#include "platform/input_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::TempDirectory;

std::string ReadText(const InputFile& file, std::uint64_t offset, std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    bytes.resize(file.ReadAt(offset, bytes));
    return {bytes.begin(), bytes.end()};
}

TEST(InputFile, ReadsAtAnyPosition) {
    const TempDirectory directory;
    InputFile file;
    EXPECT_FALSE(file.IsOpen());
    ASSERT_TRUE(file.Open(directory.WriteFile("f", "abcdefgh")));
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(ReadText(file, 5, 3), "fgh");
    EXPECT_EQ(ReadText(file, 0, 3), "abc");
    EXPECT_EQ(ReadText(file, 4, 0), "");
}

TEST(InputFile, DeliversLessAtTheEnd) {
    const TempDirectory directory;
    InputFile file;
    ASSERT_TRUE(file.Open(directory.WriteFile("f", "abcdefgh")));
    EXPECT_EQ(ReadText(file, 6, 5), "gh");
    EXPECT_EQ(ReadText(file, 8, 5), "");
    EXPECT_EQ(ReadText(file, 100, 5), "");
}

TEST(InputFile, ReadsBeyondPositionsOf32Bits) {
    const TempDirectory directory;
    for (const std::uint64_t offset : {0x7FFFFFFCU, 0xFFFFFFFCU}) {
        const std::string path = directory.WriteFile("f", "");
        // The bytes before it are a hole, which takes no disk space.
        std::filesystem::resize_file(path, offset);
        std::ofstream(path, std::ios::app) << "abcdefgh";
        InputFile file;
        ASSERT_TRUE(file.Open(path));
        EXPECT_EQ(ReadText(file, offset, 8), "abcdefgh") << offset;
        EXPECT_EQ(ReadText(file, offset + 5, 8), "fgh") << offset;
        EXPECT_EQ(file.Status().sizeBytes, static_cast<std::int64_t>(offset + 8));
    }
}

TEST(InputFile, TellsWhatIsOpen) {
    const TempDirectory directory;
    InputFile file;
    ASSERT_TRUE(file.Open(directory.WriteFile("f", "abcd")));
    EXPECT_EQ(file.Status().type, FileType::Regular);
    EXPECT_EQ(file.Status().sizeBytes, 4);
}

TEST(InputFile, OpensNothingThatIsNotThere) {
    const TempDirectory directory;
    InputFile file;
    EXPECT_FALSE(file.Open(directory / "missing"));
    EXPECT_FALSE(file.IsOpen());
}

TEST(InputFile, DirectoryAndFifoOpenWithoutWaitingAndDeliverNothing) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    InputFile fifo;
    ASSERT_TRUE(fifo.Open(directory / "fifo"));
    EXPECT_EQ(fifo.Status().type, FileType::Fifo);
    EXPECT_EQ(ReadText(fifo, 0, 3), "");
    InputFile opened;
    ASSERT_TRUE(opened.Open(directory.Path()));
    EXPECT_EQ(opened.Status().type, FileType::Directory);
    EXPECT_EQ(ReadText(opened, 0, 3), "");
}

TEST(InputFile, ReadAheadChangesNothing) {
    const TempDirectory directory;
    InputFile file;
    ASSERT_TRUE(file.Open(directory.WriteFile("f", "abcdefgh")));
    file.ReadAhead(2, 100);
    EXPECT_EQ(ReadText(file, 1, 3), "bcd");
}

}  // namespace
}  // namespace sealkeeper
