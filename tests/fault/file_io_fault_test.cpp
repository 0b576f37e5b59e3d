#include <gtest/gtest.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <vector>

#include "fault/fault_injection.h"
#include "platform/directory_listing.h"
#include "platform/file_io.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ScopedFault;
using test::TempDirectory;
using Reach = ScopedFault::Reach;

// The lowest free descriptor, which the next open takes.
int LowestFreeDescriptor() {
    const int descriptor = dup(STDIN_FILENO);
    close(descriptor);
    return descriptor;
}

struct ReadFault {
    const char* name;
    Call call;
    std::size_t firstFailing;
    int value;
};

TEST(FileIoFaults, WholeFileThatCannotBeRead) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "content");
    const std::vector<ReadFault> faults = {
        {"open", Call::Open, 0, 0},
        {"fdopen", Call::Fdopen, 0, 0},
        {"seek to the end", Call::Fseeko, 0, 0},
        {"seek to the start", Call::Fseeko, 1, 0},
        {"read of nothing", Call::Fread, 0, 0},
        {"read of all but one byte", Call::Fread, 0, 6},
    };
    const int before = LowestFreeDescriptor();
    for (const ReadFault& failing : faults) {
        const ScopedFault fault(failing.call, failing.firstFailing, Reach::Once, failing.value);
        EXPECT_EQ(ReadWholeFile(path), std::nullopt) << failing.name;
        EXPECT_TRUE(fault.Struck()) << failing.name;
        EXPECT_EQ(LowestFreeDescriptor(), before) << failing.name;
    }
    EXPECT_TRUE(ReadWholeFile(path).has_value());
}

TEST(FileIoFaults, SizeComesFromTheEndAndNotFromTheStatus) {
    const TempDirectory directory;
    const ScopedFault fault(Call::Fstat, 0, Reach::Once, -1);
    const auto bytes = ReadWholeFile(directory.WriteFile("a", "content"));
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(std::string(bytes->begin(), bytes->end()), "content");
}

TEST(FileIoFaults, DirectoryThatCannotBeOpened) {
    const TempDirectory directory;
    const ScopedFault fault(Call::Opendir);
    EXPECT_FALSE(ReadDirectory(directory / "").has_value());
}

}  // namespace
}  // namespace sealkeeper
