#include "app/terminal_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

std::string Written(const std::string& text, const std::string& marked) {
    CapturedOutput output;
    WriteForTerminal(text, marked, stdout);
    return output.Take();
}

// Escapes a text that is wholly untrusted. A string gives the same result.
std::string Shown(const std::string& text) {
    std::string written = Written(text, text);
    EXPECT_EQ(EscapeControls(text), written);
    return written;
}

TEST(TerminalText, EveryAsciiControlCharacterIsEscaped) {
    const std::string digits = "0123456789abcdef";
    for (unsigned code = 0; code < 0x80; ++code) {
        const std::string text(1, static_cast<char>(code));
        const bool isControl = code < 0x20 || code == 0x7F;
        const std::string escaped = {'\\', 'x', digits[code / 16], digits[code % 16]};
        EXPECT_EQ(Shown("a" + text + "b"), "a" + (isControl ? escaped : text) + "b");
    }
}

struct TextCase {
    const char* name;
    std::string text;
    std::string shown;
};

TEST(TerminalText, CharactersBeyondAscii) {
    const std::vector<TextCase> cases = {
        {"first of C1", "\xC2\x80", R"(\xc2\x80)"},
        {"control sequence introducer", "\xC2\x9B", R"(\xc2\x9b)"},
        {"last of C1", "\xC2\x9F", R"(\xc2\x9f)"},
        {"next after C1", "\xC2\xA0", "\xC2\xA0"},
        {"a C1 byte in a letter", "\xC3\x9B", "\xC3\x9B"},
        {"three bytes with C1 bytes", "\xE2\x80\x9B", "\xE2\x80\x9B"},
        {"four bytes with C1 bytes", "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
        {"first and last of their lengths", "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF4\x8F\xBF\xBF",
         "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF4\x8F\xBF\xBF"},
        {"between two letters", "\xC3\xA9\n\xC3\xA9", "\xC3\xA9\\x0a\xC3\xA9"},
    };
    for (const TextCase& shown : cases) {
        EXPECT_EQ(Shown(shown.text), shown.shown) << shown.name;
    }
}

// Lenient terminals take these for control characters.
TEST(TerminalText, C1BytesOutsideOfWellFormedUtf8AreEscaped) {
    const std::vector<TextCase> cases = {
        {"alone", "\x9B", R"(\x9b)"},
        {"the bytes past C1 are no control", "\x80\x9F\xA0\xFF", "\\x80\\x9f\xA0\xFF"},
        {"after a whole letter", "\xC3\xA9\x9B", "\xC3\xA9\\x9b"},
        {"overlong escape", "\xC0\x9B", "\xC0\\x9b"},
        {"overlong escape, three bytes", "\xE0\x80\x9B", "\xE0\\x80\\x9b"},
        {"overlong escape, four bytes", "\xF0\x80\x80\x9B", "\xF0\\x80\\x80\\x9b"},
        {"surrogate", "\xED\xA0\x9B", "\xED\xA0\\x9b"},
        {"past the last code point", "\xF4\x90\x80\x80", "\xF4\\x90\\x80\\x80"},
        {"lead byte past the last", "\xF5\x80\x80\x80", "\xF5\\x80\\x80\\x80"},
        {"cut in a letter", "a\xE2\x80", "a\xE2\\x80"},
        {"letter that an escape ends", "\xE2\x80\x1B[", "\xE2\\x80\\x1b["},
        {"lead byte at the end", "\xC2", "\xC2"},
    };
    for (const TextCase& shown : cases) {
        EXPECT_EQ(Shown(shown.text), shown.shown) << shown.name;
    }
}

TEST(TerminalText, OwnControlCharactersStay) {
    EXPECT_EQ(Written("a\nb\n", "a\nb?"), "a\\x0ab\n");
    EXPECT_EQ(Written("\n\n\t", "???"), "\n\n\t");
}

TEST(TerminalText, NothingIsWrittenForNothing) {
    EXPECT_EQ(Shown(""), "");
}

TEST(TerminalText, TellsWhetherTextBeginsWithAControl) {
    EXPECT_TRUE(BeginsWithControl("\n"));
    EXPECT_TRUE(BeginsWithControl("\xC2\x9B"));
    EXPECT_FALSE(BeginsWithControl("a\n"));
    EXPECT_FALSE(BeginsWithControl("\xC3\x9B"));
}

// As for a message that was cut: whatever is past the marked text counts as untrusted.
TEST(TerminalText, PastTheMarkedTextNothingIsTheProgramsOwn) {
    EXPECT_EQ(Written("a\nb\n", "a?b"), "a\nb\\x0a");
    EXPECT_EQ(Written("a\n", ""), "a\\x0a");
}

}  // namespace
}  // namespace sealkeeper
