#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <string>

#include "fault/fault_injection.h"
#include "platform/file_descriptor.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ReadFile;
using test::ScopedFault;
using test::TempDirectory;
using Reach = ScopedFault::Reach;

constexpr std::array<std::uint8_t, 2> kContent = {'h', 'i'};

// Linux reports this for a file under a lease instead of waiting for the holder.
TEST(FileDescriptorFaults, AFileUnderALeaseIsWaitedFor) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    const ScopedFault fault(Call::Open, 0, Reach::Once, EWOULDBLOCK);
    FileDescriptor descriptor;
    EXPECT_TRUE(descriptor.OpenForReading(path));
    EXPECT_TRUE(descriptor.HasWaited());
    EXPECT_EQ(fcntl(descriptor.Get(), F_GETFL) & O_NONBLOCK, 0);
    EXPECT_EQ(test::CallCount(Call::Open), 2U);
}

TEST(FileDescriptorFaults, AFileUnderALeaseMayStillFailToOpen) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "12345");
    const ScopedFault fault(Call::Open, 0, Reach::Twice, EWOULDBLOCK);
    FileDescriptor descriptor;
    EXPECT_FALSE(descriptor.OpenForReading(path));
    EXPECT_FALSE(descriptor.HasWaited());
}

// The other end may never be opened.
TEST(FileDescriptorFaults, AFifoIsNotWaitedFor) {
    const TempDirectory directory;
    const std::string path = directory / "fifo";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const ScopedFault fault(Call::Open, 0, Reach::Once, EWOULDBLOCK);
    FileDescriptor descriptor;
    EXPECT_FALSE(descriptor.OpenForReading(path));
    EXPECT_FALSE(descriptor.HasWaited());
    EXPECT_EQ(test::CallCount(Call::Open), 1U);
}

// The write would be retried forever.
TEST(FileDescriptorFaults, WhatTakesNoBytesCannotBeWritten) {
    const TempDirectory directory;
    const std::string path = directory / "a";
    FileDescriptor descriptor;
    ASSERT_TRUE(descriptor.Create(path, 0600));
    {
        const ScopedFault fault(Call::WriteShort, 0, Reach::Onwards, 0);
        EXPECT_FALSE(descriptor.Write(kContent));
        EXPECT_TRUE(fault.Struck());
    }
    EXPECT_TRUE(descriptor.Write(kContent));
    EXPECT_EQ(ReadFile(path), "hi");
}

}  // namespace
}  // namespace sealkeeper
