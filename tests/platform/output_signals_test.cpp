#include "platform/output_signals.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "support/child_process.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::TempDirectory;

// The errno of a write to a pipe without a reader.
int ErrorOfBrokenPipe() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0 || close(ends[0]) != 0) {
        return 0;
    }
    return write(ends[1], "a", 1) < 0 ? errno : 0;
}

// The errno of a write past the file size limit.
int ErrorOfTooLargeFile(const std::string& path) {
    rlimit before{};
    const int descriptor = open(path.c_str(), O_WRONLY);
    if (descriptor < 0 || getrlimit(RLIMIT_FSIZE, &before) != 0) {
        return 0;
    }
    const rlimit none{0, before.rlim_max};
    if (setrlimit(RLIMIT_FSIZE, &none) != 0) {
        return 0;
    }
    const int error = write(descriptor, "a", 1) < 0 ? errno : 0;
    return setrlimit(RLIMIT_FSIZE, &before) == 0 ? error : 0;
}

// Each in its own process, since the test run itself would ignore the signals.
TEST(OutputSignals, EndTheProcessOtherwise) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "");
    const auto actAsUsual = [] {
        for (const int number : {SIGPIPE, SIGXFSZ}) {
            static_cast<void>(std::signal(number, SIG_DFL));
        }
    };
    EXPECT_EXIT(actAsUsual();
                test::EndChild(ErrorOfBrokenPipe()), testing::KilledBySignal(SIGPIPE), "");
    EXPECT_EXIT(actAsUsual();
                test::EndChild(ErrorOfTooLargeFile(path)), testing::KilledBySignal(SIGXFSZ), "");
}

TEST(OutputSignals, IgnoredWritingFailsInTheirPlace) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a", "");
    EXPECT_EXIT(IgnoreOutputSignals();
                test::EndChild(ErrorOfBrokenPipe()), testing::ExitedWithCode(EPIPE), "");
    EXPECT_EXIT(IgnoreOutputSignals();
                test::EndChild(ErrorOfTooLargeFile(path)), testing::ExitedWithCode(EFBIG), "");
}

}  // namespace
}  // namespace sealkeeper
