#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "fault/fault_injection.h"
#include "platform/output_file.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::Call;
using test::ReadFile;
using test::ScopedFault;
using test::TempDirectory;
using Reach = ScopedFault::Reach;

const std::vector<std::uint8_t> kNew = {'n', 'e', 'w'};

struct OutputFault {
    const char* name;
    Call call;
    std::size_t firstFailing;
    int error;
    WriteOutcome outcome;
};

// A second hard link to the file tells whether it is replaced or written in place.
class OutputFileFaults : public testing::Test {
  protected:
    OutputFileFaults() : path_(directory_ / "a"), hardLink_(directory_ / "link") { PutOldFile(); }

    void PutOldFile() {
        fs::remove(hardLink_);
        fs::remove(path_);
        directory_.WriteFile("a", "old content");
        // Then the new file must be given this mode.
        EXPECT_EQ(chmod(path_.c_str(), 0606), 0);
        fs::create_hard_link(path_, hardLink_);
    }

    [[nodiscard]] WriteOutcome Write() const {
        const mode_t before = umask(077);
        const WriteOutcome outcome = WriteWholeFile(path_, kNew);
        umask(before);
        return outcome;
    }

    void ExpectOutcome(const OutputFault& failing) const {
        const ScopedFault fault(failing.call, failing.firstFailing, Reach::Once, failing.error);
        EXPECT_EQ(Write(), failing.outcome);
        EXPECT_TRUE(fault.Struck());
    }

    // No temporary file remains.
    void ExpectNames(std::size_t count) const {
        const fs::directory_iterator names(directory_.Path());
        EXPECT_EQ(std::distance(begin(names), end(names)), static_cast<std::ptrdiff_t>(count));
    }

    void ExpectOld() const {
        EXPECT_EQ(ReadFile(path_), "old content");
        EXPECT_EQ(ReadFile(hardLink_), "old content");
        ExpectNames(2);
    }
    void ExpectReplaced() const {
        EXPECT_EQ(ReadFile(path_), "new");
        EXPECT_EQ(ReadFile(hardLink_), "old content");
        ExpectMode();
        ExpectNames(2);
    }
    void ExpectWrittenInPlace() const {
        EXPECT_EQ(ReadFile(path_), "new");
        EXPECT_EQ(ReadFile(hardLink_), "new");
        ExpectMode();
        ExpectNames(2);
    }
    void ExpectMode() const {
        struct stat status {};
        EXPECT_EQ(stat(path_.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0606U);
    }

    TempDirectory directory_;
    std::string path_;
    std::string hardLink_;
};

TEST_F(OutputFileFaults, ReplacesWithoutAFault) {
    EXPECT_EQ(Write(), WriteOutcome::Written);
    ExpectReplaced();
}

TEST_F(OutputFileFaults, AFailureLeavesTheOldFile) {
    const std::vector<OutputFault> faults = {
        {"looking at the old file, not allowed", Call::Open, 0, EACCES, WriteOutcome::OpenFailed},
        {"looking at the old file, in use", Call::Open, 0, ETXTBSY, WriteOutcome::OpenFailed},
        {"creating, no descriptor", Call::Open, 1, EMFILE, WriteOutcome::OpenFailed},
        {"creating, full disk", Call::Open, 1, ENOSPC, WriteOutcome::OpenFailed},
        {"creating, quota", Call::Open, 1, EDQUOT, WriteOutcome::OpenFailed},
        {"creating, bad disk", Call::Open, 1, EIO, WriteOutcome::OpenFailed},
        {"writing, full disk", Call::Write, 0, ENOSPC, WriteOutcome::WriteFailed},
        {"writing, quota", Call::Write, 0, EDQUOT, WriteOutcome::WriteFailed},
        {"writing, limit", Call::Write, 0, EFBIG, WriteOutcome::WriteFailed},
        {"writing, bad disk", Call::Write, 0, EIO, WriteOutcome::WriteFailed},
        {"giving the mode", Call::Fchmod, 0, EIO, WriteOutcome::WriteFailed},
        {"flushing, bad disk", Call::Fsync, 0, EIO, WriteOutcome::WriteFailed},
        {"flushing, full disk", Call::Fsync, 0, ENOSPC, WriteOutcome::WriteFailed},
        {"flushing, quota", Call::Fsync, 0, EDQUOT, WriteOutcome::WriteFailed},
        {"closing, bad disk", Call::CloseWritten, 1, EIO, WriteOutcome::CloseFailed},
        {"closing, quota", Call::CloseWritten, 1, EDQUOT, WriteOutcome::CloseFailed},
        {"renaming, bad disk", Call::Rename, 0, EIO, WriteOutcome::WriteFailed},
        {"renaming, full disk", Call::Rename, 0, ENOSPC, WriteOutcome::WriteFailed},
    };
    for (const OutputFault& failing : faults) {
        SCOPED_TRACE(failing.name);
        ExpectOutcome(failing);
        ExpectOld();
    }
}

TEST_F(OutputFileFaults, AFailureLeavesNoNewFile) {
    fs::remove(path_);
    fs::remove(hardLink_);
    const std::vector<OutputFault> faults = {
        {"creating", Call::Open, 1, EIO, WriteOutcome::OpenFailed},
        {"writing", Call::Write, 0, ENOSPC, WriteOutcome::WriteFailed},
        {"flushing", Call::Fsync, 0, EIO, WriteOutcome::WriteFailed},
        {"closing", Call::CloseWritten, 0, EIO, WriteOutcome::CloseFailed},
        {"renaming", Call::Rename, 0, EIO, WriteOutcome::WriteFailed},
    };
    for (const OutputFault& failing : faults) {
        SCOPED_TRACE(failing.name);
        ExpectOutcome(failing);
        ExpectNames(0);
    }
}

TEST_F(OutputFileFaults, WhatChangesNothingIsNoFailure) {
    const std::vector<OutputFault> faults = {
        {"closing what was only looked at", Call::CloseWritten, 0, EIO, WriteOutcome::Written},
        {"a file system that does not flush", Call::Fsync, 0, EINVAL, WriteOutcome::Written},
        {"the same, in other words", Call::Fsync, 0, ENOTSUP, WriteOutcome::Written},
        {"the same, not known", Call::Fsync, 0, ENOSYS, WriteOutcome::Written},
        {"flushing interrupted", Call::Fsync, 0, EINTR, WriteOutcome::Written},
        {"opening the directory", Call::Open, 2, EACCES, WriteOutcome::Written},
        {"flushing the directory", Call::Fsync, 1, EIO, WriteOutcome::Written},
        {"writing interrupted", Call::WriteInterrupted, 0, 0, WriteOutcome::Written},
        {"writing a byte at first", Call::WriteShort, 0, 1, WriteOutcome::Written},
        {"a name that is taken", Call::Open, 1, EEXIST, WriteOutcome::Written},
    };
    for (const OutputFault& failing : faults) {
        SCOPED_TRACE(failing.name);
        PutOldFile();
        ExpectOutcome(failing);
        ExpectReplaced();
    }
}

TEST_F(OutputFileFaults, WhatMayNotBeReplacedIsWrittenInPlace) {
    const std::vector<OutputFault> faults = {
        {"directory of another user", Call::Open, 1, EACCES, WriteOutcome::Written},
        {"directory that is marked unchangeable", Call::Open, 1, EPERM, WriteOutcome::Written},
        {"directory of a read-only file system", Call::Open, 1, EROFS, WriteOutcome::Written},
        {"file system without modes", Call::Fchmod, 0, EPERM, WriteOutcome::Written},
        {"the same, in other words", Call::Fchmod, 0, ENOTSUP, WriteOutcome::Written},
        {"the same, not known", Call::Fchmod, 0, ENOSYS, WriteOutcome::Written},
        {"file of another user in a sticky directory", Call::Rename, 0, EPERM,
         WriteOutcome::Written},
        {"the same, in other words", Call::Rename, 0, EACCES, WriteOutcome::Written},
        {"mount point", Call::Rename, 0, EBUSY, WriteOutcome::Written},
        {"file from another file system", Call::Rename, 0, EXDEV, WriteOutcome::Written},
    };
    for (const OutputFault& failing : faults) {
        SCOPED_TRACE(failing.name);
        PutOldFile();
        ExpectOutcome(failing);
        ExpectWrittenInPlace();
    }
}

TEST_F(OutputFileFaults, NoNameIsFree) {
    const ScopedFault fault(Call::Open, 1, Reach::Onwards, EEXIST);
    EXPECT_EQ(Write(), WriteOutcome::OpenFailed);
    ExpectOld();
}

TEST_F(OutputFileFaults, AnotherOwnerIsNotGivenTheRightToRunAsTheOldOne) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs the superuser";
    }
    ASSERT_EQ(chown(path_.c_str(), 12, 34), 0);
    ASSERT_EQ(chmod(path_.c_str(), 06755), 0);
    const ScopedFault fault(Call::Fchown);
    EXPECT_EQ(Write(), WriteOutcome::Written);
    EXPECT_TRUE(fault.Struck());
    struct stat status {};
    ASSERT_EQ(stat(path_.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 0U);
    EXPECT_EQ(status.st_mode & 07777, 0755U);
}

TEST_F(OutputFileFaults, WrittenInPlaceItCanFailAsWell) {
    const std::vector<OutputFault> faults = {
        {"writing", Call::Write, 0, ENOSPC, WriteOutcome::WriteFailed},
        {"closing", Call::CloseWritten, 1, EIO, WriteOutcome::CloseFailed},
    };
    for (const OutputFault& failing : faults) {
        SCOPED_TRACE(failing.name);
        const ScopedFault refusal(Call::Open, 1, Reach::Once, EACCES);
        ExpectOutcome(failing);
        ExpectNames(2);
    }
    const ScopedFault refusal(Call::Open, 1, Reach::Twice, EACCES);
    EXPECT_EQ(Write(), WriteOutcome::OpenFailed);
}

TEST_F(OutputFileFaults, AFileWhoseStatusIsNotToldIsNotWritten) {
    const ScopedFault fault(Call::FstatFailure, 0, Reach::Once, EIO);
    EXPECT_EQ(Write(), WriteOutcome::OpenFailed);
    EXPECT_TRUE(fault.Struck());
    ExpectOld();
}

// After those of the old file and of the two descriptors that may be the console.
constexpr std::size_t kStatusOfTheNewFile = 3;

TEST_F(OutputFileFaults, AModeThatIsNotToldIsNotTakenOver) {
    {
        const ScopedFault fault(Call::FstatFailure, kStatusOfTheNewFile, Reach::Once, EIO);
        EXPECT_EQ(Write(), WriteOutcome::WriteFailed);
        EXPECT_TRUE(fault.Struck());
        ExpectOld();
    }
    const ScopedFault fault(Call::FstatFailure, kStatusOfTheNewFile, Reach::Once, ENOSYS);
    EXPECT_EQ(Write(), WriteOutcome::Written);
    EXPECT_TRUE(fault.Struck());
    ExpectWrittenInPlace();
}

// On some file systems nobody can create a temporary file beside it.
TEST_F(OutputFileFaults, ANewFileMayBeWrittenInPlace) {
    fs::remove(path_);
    fs::remove(hardLink_);
    const ScopedFault fault(Call::Open, 1, Reach::Once, EPERM);
    EXPECT_EQ(Write(), WriteOutcome::Written);
    EXPECT_TRUE(fault.Struck());
    EXPECT_EQ(ReadFile(path_), "new");
    ExpectNames(1);
}

TEST_F(OutputFileFaults, AGroupAloneIsTakenOverToo) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs the superuser";
    }
    constexpr auto kUnchanged = static_cast<uid_t>(-1);
    ASSERT_EQ(chown(path_.c_str(), kUnchanged, 34), 0);
    test::ResetCallCount(Call::Fchown);
    EXPECT_EQ(Write(), WriteOutcome::Written);
    EXPECT_EQ(test::CallCount(Call::Fchown), 1U);
    struct stat status {};
    ASSERT_EQ(stat(path_.c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, 34U);
    ExpectReplaced();
}

}  // namespace
}  // namespace sealkeeper
