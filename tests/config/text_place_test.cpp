#include "config/text_place.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace sealkeeper {
namespace {

TEST(TextPlace, CountsLinesAndBytesFromOne) {
    const std::string text =
        "ab\n\nc\xC3\xA4"
        "d";
    EXPECT_EQ(PlaceOf(text, 0), (TextPlace{1, 1}));
    EXPECT_EQ(PlaceOf(text, 2), (TextPlace{1, 3})) << "a line feed belongs to its line";
    EXPECT_EQ(PlaceOf(text, 3), (TextPlace{2, 1}));
    EXPECT_EQ(PlaceOf(text, 4), (TextPlace{3, 1}));
    EXPECT_EQ(PlaceOf(text, 7), (TextPlace{3, 4})) << "a letter of two bytes";
    EXPECT_EQ(PlaceOf(text, 8), (TextPlace{3, 5})) << "past the end";
    EXPECT_EQ(PlaceOf("", 0), (TextPlace{1, 1}));
}

TEST(TextPlace, CarriageReturnEndsNoLine) {
    EXPECT_EQ(PlaceOf("a\r\nb\rc", 5), (TextPlace{2, 3}));
}

TEST(TextPlace, LinesGiveTheSamePlaces) {
    for (const std::string text : {"", "\n", "\n\n", "a", "a\n", "ab\n\nc\nd", "\na\r\n"}) {
        const TextLines lines(text);
        for (std::size_t offset = 0; offset <= text.size() + 1; ++offset) {
            EXPECT_EQ(lines.PlaceOf(offset), PlaceOf(text, offset)) << text << offset;
            EXPECT_EQ(lines.LineEnd(offset), std::min(text.find('\n', offset), text.size()))
                << text << offset;
        }
    }
}

}  // namespace
}  // namespace sealkeeper
