// What a check shows on a terminal while it works, on a clock that the test sets.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/sealed_game.h"
#include "catalogue/hashing/chunks.h"
#include "inspect/check/game_check.h"
#include "inspect/report/scoped_terminal.h"
#include "support/fake_clock.h"
#include "support/quiet_log.h"

namespace sealkeeper {
namespace {

using std::chrono::milliseconds;
using Lines = std::vector<std::string>;

constexpr const char* kClearedLine = "\r\x1b[K";
constexpr milliseconds kDrawingInterval{100};

// What was drawn in place of each other; what was cleared last is followed by an empty line.
Lines DrawnLines(const std::string& shown) {
    Lines lines;
    for (std::size_t at = shown.find(kClearedLine); at != std::string::npos;) {
        const std::size_t begin = at + std::string(kClearedLine).size();
        at = shown.find(kClearedLine, begin);
        lines.push_back(shown.substr(begin, at == std::string::npos ? at : at - begin));
    }
    return lines;
}

// The share that each line tells, once where several tell the same.
Lines SharesOf(const Lines& lines) {
    Lines shares;
    for (const std::string& line : lines) {
        const std::size_t end = line.find(" %");
        if (end != std::string::npos && end >= 3) {
            shares.push_back(line.substr(end - 3, 3));
        }
    }
    shares.erase(std::unique(shares.begin(), shares.end()), shares.end());
    return shares;
}

// Of a game whose last file has three chunks.
class CheckProgress : public testing::Test {
  protected:
    CheckProgress() {
        game_.Directory().WriteFile("world", std::string(2 * kChunkBytes + 1, 'x'));
        test::Seal(game_.Directory(), "world", {{L"world", {}}});
        game_.VerifyBy(options_);
    }

    // What a check shows on a terminal of that kind and width if at each look the clock has gone on
    // by `step`.
    [[nodiscard]] std::string Shown(milliseconds step, unsigned short columns = 80,
                                    const char* kind = "xterm") const {
        test::ScopedTerminal terminal(STDERR_FILENO);
        terminal.SetColumns(columns);
        const test::ScopedVariable kindVariable("TERM", kind);
        const test::ScopedVariable columnsVariable("COLUMNS", std::nullopt);
        test::FakeClock clock;
        clock.AdvanceAtEachReading(step);
        EXPECT_EQ(CheckGame(options_).code, ResultCode::Ok);
        return terminal.Written();
    }

    const test::QuietLog quiet_;
    test::SealedGame game_;
    CommandLineOptions options_;
};

TEST_F(CheckProgress, MovesWithinAFileAndGoes) {
    for (const unsigned jobs : {1U, 2U}) {
        options_.jobs = jobs;
        const Lines lines = DrawnLines(Shown(kDrawingInterval));
        EXPECT_EQ(SharesOf(lines), (Lines{"  0", " 50", " 99", "100"})) << jobs;
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.back(), "") << jobs;
    }
}

TEST_F(CheckProgress, IsNotShownBeforeItsTime) {
    EXPECT_EQ(Shown(milliseconds(0)), "");
}

TEST_F(CheckProgress, DoesNotWrap) {
    const Lines lines = DrawnLines(Shown(kDrawingInterval, 24));
    EXPECT_EQ(SharesOf(lines), (Lines{"  0", " 50", " 99", "100"}));
    for (const std::string& line : lines) {
        EXPECT_LT(line.size(), 24U) << line;
    }
}

TEST_F(CheckProgress, IsNotShownOnADumbTerminal) {
    EXPECT_EQ(Shown(kDrawingInterval, 80, "dumb"), "");
}

}  // namespace
}  // namespace sealkeeper
