#include "config/text_place.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace sealkeeper {
namespace {

TEST(TextPlace, CountsLinesAndBytesFromOne) {
    const TextLines lines(
        "ab\n\nc\xC3\xA4"
        "d");
    EXPECT_EQ(lines.PlaceOf(0), (TextPlace{1, 1}));
    EXPECT_EQ(lines.PlaceOf(2), (TextPlace{1, 3})) << "a line feed belongs to its line";
    EXPECT_EQ(lines.PlaceOf(3), (TextPlace{2, 1}));
    EXPECT_EQ(lines.PlaceOf(4), (TextPlace{3, 1}));
    EXPECT_EQ(lines.PlaceOf(7), (TextPlace{3, 4})) << "a letter of two bytes";
    EXPECT_EQ(lines.PlaceOf(8), (TextPlace{3, 5})) << "past the end";
    EXPECT_EQ(TextLines("").PlaceOf(0), (TextPlace{1, 1}));
}

TEST(TextPlace, CarriageReturnEndsNoLine) {
    EXPECT_EQ(TextLines("a\r\nb\rc").PlaceOf(5), (TextPlace{2, 3}));
}

// Compared with counting byte by byte.
TEST(TextPlace, IsWhatCountingGives) {
    for (const std::string text : {"", "\n", "\n\n", "a", "a\n", "ab\n\nc\nd", "\na\r\n"}) {
        const TextLines lines(text);
        TextPlace counted;
        for (std::size_t offset = 0; offset <= text.size() + 1; ++offset) {
            EXPECT_EQ(lines.PlaceOf(offset), counted) << text << offset;
            EXPECT_EQ(lines.LineEnd(offset), std::min(text.find('\n', offset), text.size()))
                << text << offset;
            const bool endsLine = offset < text.size() && text[offset] == '\n';
            counted = endsLine ? TextPlace{counted.line + 1, 1}
                               : TextPlace{counted.line, counted.column + 1};
        }
    }
}

}  // namespace
}  // namespace sealkeeper
