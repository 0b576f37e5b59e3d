#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

#include "app/console_log.h"
#include "support/child_process.h"

namespace sealkeeper {
namespace {

// After this time the test has failed.
constexpr int kMostMilliseconds = 30'000;

// Opens a terminal and returns the side that reads what it shows; negative if there is none.
int OpenTerminal() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        return -1;
    }
    return master;
}

// Makes a terminal the standard output of this process, with bytes passed unchanged.
bool WriteTo(int master) {
    // Flushes what the process printed earlier.
    std::fflush(stdout);
    const int terminal = open(ptsname(master), O_RDWR | O_NOCTTY);
    termios mode{};
    if (tcgetattr(terminal, &mode) != 0) {
        return false;
    }
    // Otherwise the terminal puts a carriage return before each line feed.
    mode.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    return tcsetattr(terminal, TCSANOW, &mode) == 0 &&
           dup2(terminal, STDOUT_FILENO) == STDOUT_FILENO;
}

// The first `bytes` bytes shown by the terminal, which may deliver them in pieces; fewer if no more
// come.
std::string Shown(int master, std::size_t bytes) {
    std::fflush(stdout);
    std::string shown;
    std::array<char, 1024> piece{};
    pollfd readable{master, POLLIN, 0};
    while (shown.size() < bytes && poll(&readable, 1, kMostMilliseconds) == 1) {
        const ssize_t count = read(master, piece.data(), piece.size());
        if (count <= 0) {
            break;
        }
        shown.append(piece.data(), static_cast<std::size_t>(count));
    }
    return shown;
}

// Standard output is examined only once, so this needs a fresh process, not a fork.
class ConsoleLogOnATerminal : public testing::Test {
  protected:
    ConsoleLogOnATerminal() : styleBefore_(GTEST_FLAG_GET(death_test_style)) {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
    }
    ~ConsoleLogOnATerminal() override { GTEST_FLAG_SET(death_test_style, styleBefore_); }

  private:
    std::string styleBefore_;
};

TEST_F(ConsoleLogOnATerminal, ShowsControlCharactersOfArgumentsEscaped) {
    const int master = OpenTerminal();
    if (master < 0) {
        GTEST_SKIP() << "there are no terminals";
    }
    const std::string expected = "[Info] a/b\n\tc\\x0a\\x1b[2J/d \\xc2\\x9b\xC3\xA9.\n[Warn] \\x0d";
    // Writes what the terminal showed to standard error at the end.
    const auto log = [master, &expected] {
        if (WriteTo(master)) {
            Log(LogLevel::Info, "a\\b\n\t%s.\n", "c\n\x1b[2J\\d \xC2\x9B\xC3\xA9");
            Log(LogLevel::Warning, "%s", "\r");
            Log(LogLevel::Verbose, "%s", "not shown");
            Log(LogLevel::Error, "%s", "");
            std::fputs(Shown(master, expected.size()).c_str(), stderr);
        }
        test::EndChild(0);
    };
    EXPECT_EXIT(log(), testing::ExitedWithCode(0), testing::Eq(expected));
    close(master);
}

}  // namespace
}  // namespace sealkeeper
