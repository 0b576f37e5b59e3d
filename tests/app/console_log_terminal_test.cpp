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

// A test that waits that long has failed.
constexpr int kMostMilliseconds = 30'000;

// The side of a new terminal on which can be read what it shows; below 0 where there is none.
int OpenTerminal() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        return -1;
    }
    return master;
}

// Makes a terminal the standard output of this process, and shows it bytes as they are.
bool WriteTo(int master) {
    // What the process printed at its start.
    std::fflush(stdout);
    const int terminal = open(ptsname(master), O_RDWR | O_NOCTTY);
    termios mode{};
    if (tcgetattr(terminal, &mode) != 0) {
        return false;
    }
    // Otherwise it puts a carriage return before each line feed.
    mode.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    return tcsetattr(terminal, TCSANOW, &mode) == 0 &&
           dup2(terminal, STDOUT_FILENO) == STDOUT_FILENO;
}

// The first `bytes` that the terminal shows, which it may hand out in pieces; what came of them
// when nothing more comes.
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

// What standard output is is asked once, so this runs in a process that begins anew, not in a copy.
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
    // Ends with what the terminal showed on standard error.
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
