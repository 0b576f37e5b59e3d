#include "inspect/credentials/examined_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::TempDirectory;

TEST(ExaminedFile, TellsTypeAndMode) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "x");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    const ExaminedFile file = ExamineFile(path);
    EXPECT_EQ(file.path, path);
    EXPECT_EQ(file.type, FileType::Regular);
    EXPECT_EQ(file.mode, 0640U);
    EXPECT_EQ(file.reasonUnread, "");
    EXPECT_EQ(file.kind, std::nullopt);
}

TEST(ExaminedFile, TellsWhyItCannotBeRead) {
    const TempDirectory directory;
    EXPECT_EQ(ExamineFile(directory / "gone").reasonUnread, "No such file or directory");
    EXPECT_EQ(ExamineFile(directory / "gone").mode, std::nullopt);
    EXPECT_EQ(ExamineFile(directory.WriteFile("a", "") + "/b").reasonUnread, "Not a directory");
    EXPECT_EQ(ExamineFile(directory.Path()).reasonUnread, "it is a directory");
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(ExamineFile(directory / "fifo").reasonUnread, "it is a FIFO, which is not opened");
}

TEST(ExaminedFile, KeepsAReasonThatIsKnown) {
    const TempDirectory directory;
    ExaminedFile file;
    file.path = directory.WriteFile("a", "");
    MarkUnread(file);
    EXPECT_EQ(file.reasonUnread, "the system failed to read it");
    file.reasonUnread = "it is a directory";
    MarkUnread(file);
    EXPECT_EQ(file.reasonUnread, "it is a directory");
}

TEST(ExaminedFile, ModeText) {
    EXPECT_EQ(ModeText(0600), "600 (rw-------)");
    EXPECT_EQ(ModeText(0755), "755 (rwxr-xr-x)");
    EXPECT_EQ(ModeText(0), "000 (---------)");
    EXPECT_EQ(ModeText(04755), "4755 (rwxr-xr-x)");
}

}  // namespace
}  // namespace sealkeeper
