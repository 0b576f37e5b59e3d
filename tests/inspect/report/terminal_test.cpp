// What is different on a terminal.
#include "inspect/report/terminal.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "inspect/report/console.h"
#include "inspect/report/scoped_terminal.h"

namespace sealkeeper {
namespace {

using test::ScopedTerminal;
using test::ScopedVariable;

// What stands for "a" in the warning's style.
std::string StyledOnATerminal(const std::optional<std::string>& noColor,
                              const std::optional<std::string>& kind) {
    const ScopedTerminal terminal(STDOUT_FILENO);
    const ScopedVariable noColorVariable("NO_COLOR", noColor);
    const ScopedVariable kindVariable("TERM", kind);
    return Console().Styled(Style::Warning, "a");
}

TEST(InspectConsole, HasColourOnATerminal) {
    constexpr const char* kYellow = "\x1b[33ma\x1b[0m";
    EXPECT_EQ(StyledOnATerminal(std::nullopt, "xterm"), kYellow);
    // Only a value counts.
    EXPECT_EQ(StyledOnATerminal("", "xterm"), kYellow);
}

TEST(InspectConsole, HasNoColourWhereItIsNotWanted) {
    EXPECT_EQ(StyledOnATerminal("1", "xterm"), "a");
    EXPECT_EQ(StyledOnATerminal(std::nullopt, "dumb"), "a");
    EXPECT_EQ(StyledOnATerminal(std::nullopt, std::nullopt), "a");
}

std::size_t ColumnsOf(unsigned short ofWindow, const std::optional<std::string>& variable) {
    ScopedTerminal terminal(STDERR_FILENO);
    terminal.SetColumns(ofWindow);
    const ScopedVariable columns("COLUMNS", variable);
    return TerminalColumns(STDERR_FILENO);
}

TEST(TerminalColumns, AreThoseOfTheWindowUnlessColumnsTellsOthers) {
    EXPECT_EQ(ColumnsOf(33, std::nullopt), 33U);
    EXPECT_EQ(ColumnsOf(33, "44"), 44U);
}

TEST(TerminalColumns, IgnoreAVariableThatIsNoNumberAboveZero) {
    for (const char* const value : {"", "0", "-1", "x", "44x", "99999999999999999999"}) {
        EXPECT_EQ(ColumnsOf(33, value), 33U) << value;
    }
}

TEST(TerminalColumns, AreEightyWhereNothingIsKnown) {
    EXPECT_EQ(ColumnsOf(0, std::nullopt), 80U);
}

}  // namespace
}  // namespace sealkeeper
