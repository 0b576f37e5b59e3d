#include "platform/standard_descriptors.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::EndChild;
using test::ReadFile;
using test::TempDirectory;

bool IsNullDevice(int descriptor) {
    struct stat opened {};
    struct stat nullDevice {};
    return fstat(descriptor, &opened) == 0 && stat("/dev/null", &nullDevice) == 0 &&
           S_ISCHR(opened.st_mode) && opened.st_rdev == nullDevice.st_rdev;
}

// Starts without the `missing` descriptors, the others open on the file `path`. Returns whether
// exactly the missing ones lead to the null device afterwards.
bool OpensJustThose(const std::vector<int>& missing, const std::string& path) {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (dup2(open(path.c_str(), O_RDWR | O_APPEND), descriptor) != descriptor) {
            return false;
        }
    }
    for (const int descriptor : missing) {
        close(descriptor);
    }
    OpenMissingStandardDescriptors();
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (write(descriptor, "a", 1) != 1) {
            return false;
        }
    }
    for (const int descriptor : missing) {
        if (!IsNullDevice(descriptor)) {
            return false;
        }
    }
    return true;
}

// Each in its own process, whose descriptors do not matter.
TEST(StandardDescriptors, ThoseThatAreMissingLeadNowhere) {
    const TempDirectory directory;
    const std::vector<std::vector<int>> cases = {{},
                                                 {STDIN_FILENO},
                                                 {STDOUT_FILENO},
                                                 {STDERR_FILENO},
                                                 {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}};
    for (const std::vector<int>& missing : cases) {
        const std::string path = directory.WriteFile("file", "");
        EXPECT_EXIT(EndChild(OpensJustThose(missing, path) ? 0 : 1), testing::ExitedWithCode(0), "")
            << missing.size();
        EXPECT_EQ(ReadFile(path), std::string(3 - missing.size(), 'a'));
    }
}

// Otherwise console output would be written into it.
TEST(StandardDescriptors, NoFileOfTheRunTakesTheirPlace) {
    const auto isPastThem = [] {
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            close(descriptor);
        }
        OpenMissingStandardDescriptors();
        return open("/dev/zero", O_RDONLY) > STDERR_FILENO;
    };
    EXPECT_EXIT(EndChild(isPastThem() ? 0 : 1), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace sealkeeper
