#include "platform/ascii_case.h"

#include <gtest/gtest.h>

#include <string>

namespace sealkeeper {
namespace {

TEST(AsciiCase, LowersTheLettersAndNothingElse) {
    for (int byte = 0; byte < 256; ++byte) {
        std::string text(3, static_cast<char>(byte));
        LowerCaseAscii(text);
        const int expected = byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
        EXPECT_EQ(text, std::string(3, static_cast<char>(expected))) << byte;
    }
}

TEST(AsciiCase, EmptyTextStaysEmpty) {
    std::string text;
    LowerCaseAscii(text);
    EXPECT_EQ(text, "");
}

TEST(AsciiCase, LettersAmongMultibyteCharactersAndNuls) {
    std::string text("Search_OPTIONS\0\xC3\x84Z", 18);
    LowerCaseAscii(text);
    EXPECT_EQ(text, std::string("search_options\0\xC3\x84z", 18));
}

}  // namespace
}  // namespace sealkeeper
