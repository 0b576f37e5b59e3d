#include "inspect/report/xml_text.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

TEST(XmlText, KeepsWhatXmlHolds) {
    const std::string text = "a <&>\"' \x7F \xC3\xA4 \xE6\x97\xA5 \xEF\xBF\xBD \xF0\x9F\x8E\xAE";
    EXPECT_EQ(XmlText(text), text);
    EXPECT_EQ(XmlText(""), "");
}

struct Replaced {
    const char* name;
    std::string text;
    const char* kept;
};

TEST(XmlText, EscapesWhatXmlDoesNotHold) {
    const std::vector<Replaced> cases = {
        {"zero", std::string("a\0b", 3), "a\\x00b"},
        {"control characters", "\x01\x1F", "\\x01\\x1f"},
        {"white space that readers change", "a\tb\nc\rd", "a\\x09b\\x0ac\\x0dd"},
        {"U+FFFE", "a\xEF\xBF\xBE.txt", "a\\xef\\xbf\\xbe.txt"},
        {"U+FFFF", "\xEF\xBF\xBF", "\\xef\\xbf\\xbf"},
        {"no UTF-8", "a\xFF\xC3", "a\\xff\\xc3"},
        {"overlong", "\xC0\xAF", "\\xc0\\xaf"},
        {"surrogate", "\xED\xA0\x80", "\\xed\\xa0\\x80"},
        {"cut off", "\xE6\x97", "\\xe6\\x97"},
    };
    for (const Replaced& given : cases) {
        EXPECT_EQ(XmlText(given.text), given.kept) << given.name;
    }
}

}  // namespace
}  // namespace sealkeeper
