#include "platform/ascii_case.h"

#include <gtest/gtest.h>

#include <string>

namespace sealkeeper {
namespace {

TEST(AsciiCase, LowersTheLettersAndNothingElse) {
    for (int byte = 0; byte < 256; ++byte) {
        const int expected = byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
        EXPECT_EQ(LowerCasedAscii(std::string(3, static_cast<char>(byte))),
                  std::string(3, static_cast<char>(expected)))
            << byte;
    }
}

TEST(AsciiCase, LettersAreThoseOfBothCases) {
    for (int byte = 0; byte < 256; ++byte) {
        const bool isLetter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        EXPECT_EQ(IsAsciiLetter(static_cast<char>(byte)), isLetter) << byte;
    }
}

TEST(AsciiCase, EmptyTextStaysEmpty) {
    EXPECT_EQ(LowerCasedAscii(""), "");
}

TEST(AsciiCase, LettersAmongMultibyteCharactersAndNuls) {
    EXPECT_EQ(LowerCasedAscii(std::string("Search_OPTIONS\0\xC3\x84Z", 18)),
              std::string("search_options\0\xC3\x84z", 18));
}

}  // namespace
}  // namespace sealkeeper
