#include "platform/file_descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::TempDirectory;

bool IsOpenInProcess(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1;
}

TEST(FileDescriptor, ClosesWhenItGoes) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    int number = -1;
    {
        FileDescriptor descriptor;
        EXPECT_FALSE(descriptor.IsOpen());
        ASSERT_TRUE(descriptor.OpenForReading(path));
        EXPECT_TRUE(descriptor.IsOpen());
        number = descriptor.Get();
        EXPECT_NE(fcntl(number, F_GETFD) & FD_CLOEXEC, 0);
    }
    EXPECT_FALSE(IsOpenInProcess(number));
}

TEST(FileDescriptor, LeavesWhatItReleasedOpen) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    int number = -1;
    {
        FileDescriptor descriptor;
        ASSERT_TRUE(descriptor.OpenForReading(path));
        number = descriptor.Get();
        descriptor.Release();
        EXPECT_FALSE(descriptor.IsOpen());
    }
    EXPECT_TRUE(IsOpenInProcess(number));
    EXPECT_EQ(close(number), 0);
}

TEST(FileDescriptor, OpensDirectoriesAndFifosWithoutWaiting) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    for (const std::string& path : {directory.Path(), directory / "fifo"}) {
        FileDescriptor descriptor;
        EXPECT_TRUE(descriptor.OpenForReading(path)) << path;
    }
}

TEST(FileDescriptor, OpensNothingThatIsNotThere) {
    const TempDirectory directory;
    for (const std::string& path : {std::string(), directory / "missing"}) {
        FileDescriptor descriptor;
        EXPECT_FALSE(descriptor.OpenForReading(path)) << path;
        EXPECT_FALSE(descriptor.IsOpen()) << path;
    }
}

}  // namespace
}  // namespace sealkeeper
