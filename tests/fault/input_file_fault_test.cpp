#include "platform/input_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fault/fault_injection.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ScopedFault;
using test::TempDirectory;
using Reach = ScopedFault::Reach;

// A file of eight bytes.
class InputFileFaults : public testing::Test {
  protected:
    InputFileFaults() { EXPECT_TRUE(file_.Open(directory_.WriteFile("f", "abcdefgh"))); }

    [[nodiscard]] std::string ReadText(std::uint64_t offset, std::size_t size) const {
        std::vector<std::uint8_t> bytes(size);
        bytes.resize(file_.ReadAt(offset, bytes));
        return {bytes.begin(), bytes.end()};
    }

    TempDirectory directory_;
    InputFile file_;
};

TEST_F(InputFileFaults, InterruptedReadIsDoneAgain) {
    const ScopedFault fault(Call::ReadInterrupted, 0, Reach::Twice);
    EXPECT_EQ(ReadText(1, 7), "bcdefgh");
    EXPECT_TRUE(fault.Struck());
}

TEST_F(InputFileFaults, ShortReadGoesOnWhereItStopped) {
    const ScopedFault fault(Call::ReadShort, 0, Reach::Onwards, 3);
    EXPECT_EQ(ReadText(0, 8), "abcdefgh");
    EXPECT_EQ(ReadText(5, 8), "fgh");
    EXPECT_TRUE(fault.Struck());
}

TEST_F(InputFileFaults, ReadThatIsShortAndThenInterruptedGoesOn) {
    const ScopedFault brief(Call::ReadShort, 0, Reach::Once, 3);
    const ScopedFault interrupted(Call::ReadInterrupted, 1, Reach::Once);
    EXPECT_EQ(ReadText(0, 8), "abcdefgh");
    EXPECT_TRUE(interrupted.Struck());
}

// errno still holds the interruption when the end is found.
TEST_F(InputFileFaults, InterruptedReadEndsWhereTheFileDoes) {
    const ScopedFault fault(Call::ReadInterrupted, 0, Reach::Once);
    EXPECT_EQ(ReadText(6, 5), "gh");
    EXPECT_TRUE(fault.Struck());
}

// Advice on other systems cannot be counted here.
#ifdef POSIX_FADV_WILLNEED

TEST_F(InputFileFaults, ReadingAheadTakesTheStepsThatItIsSaidTo) {
    EXPECT_EQ(InputFile::ReadAheadSteps(0), 0U);
    EXPECT_EQ(InputFile::ReadAheadSteps(1), 1U);
    for (const std::size_t lengthBytes :
         std::vector<std::size_t>{0, 1, 262'144, 262'145, 4'194'304}) {
        test::ResetCallCount(Call::Advise);
        file_.ReadAhead(0, lengthBytes);
        EXPECT_EQ(test::CallCount(Call::Advise), InputFile::ReadAheadSteps(lengthBytes));
    }
}

#endif

}  // namespace
}  // namespace sealkeeper
