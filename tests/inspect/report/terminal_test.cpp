// Output that differs on a terminal.
#include "inspect/report/terminal.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "inspect/report/console.h"
#include "inspect/report/scoped_terminal.h"
#include "inspect/report/terminal_safe_text.h"

namespace sealkeeper {
namespace {

using test::ScopedTerminal;
using test::ScopedVariable;

TEST(TerminalSafeText, EscapesWhatATerminalObeys) {
    EXPECT_EQ(TerminalSafeText("a\nb\x1b[0m\x7f"), "a\\x0ab\\x1b[0m\\x7f");
    EXPECT_EQ(TerminalSafeText("\xC2\x85\x85"), "\\xc2\\x85\\x85");
}

TEST(TerminalSafeText, EscapesWhatOrdersText) {
    for (const char* const character :
         {"\u061c", "\u200e", "\u200f", "\u2028", "\u2029", "\u202a", "\u202b", "\u202c", "\u202d",
          "\u202e", "\u2066", "\u2067", "\u2068", "\u2069"}) {
        std::string escaped;
        for (const char byte : std::string(character)) {
            std::array<char, 8> hex{};
            std::snprintf(hex.data(), hex.size(), "\\x%02x", static_cast<unsigned char>(byte));
            escaped += hex.data();
        }
        EXPECT_EQ(TerminalSafeText(std::string("a") + character + "b"), "a" + escaped + "b");
    }
    EXPECT_EQ(TerminalSafeText("photo\u202egpj.exe"), "photo\\xe2\\x80\\xaegpj.exe");
}

TEST(TerminalSafeText, LeavesTheNeighboursOfTheseAlone) {
    const std::string text =
        "\u061b\u061d\u060c\u200d\u2010\u2027\u202f\u2065\u206a\u10ae ü\u00ae 日本 \xFF";
    EXPECT_EQ(TerminalSafeText(text), text);
}

TEST(InspectConsole, EscapesForeignTextOnATerminal) {
    const ScopedTerminal terminal(STDOUT_FILENO);
    EXPECT_EQ(Console().Foreign("a\u202e\n"), "a\\xe2\\x80\\xae\\x0a");
}

TEST(InspectConsole, EscapesFailuresOnATerminal) {
    ScopedTerminal terminal(STDERR_FILENO);
    Console().Fail("'\u2066\x1b': no");
    EXPECT_EQ(terminal.Written(), "sealkeeper-inspect: '\\xe2\\x81\\xa6\\x1b': no\r\n");
}

// How "a" is written in the style of warnings.
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
    // An empty value does not count.
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
