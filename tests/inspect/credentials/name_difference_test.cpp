#include "inspect/credentials/name_difference.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

struct NamePair {
    const char* left;
    const char* right;
    NameDifference difference;
};

TEST(NameDifference, IsTheLeastThatExplainsIt) {
    const std::vector<NamePair> pairs = {
        {"Game", "Game", NameDifference::None},
        {"Game", "gAME", NameDifference::LetterCase},
        {"Game", " Game", NameDifference::WhiteSpace},
        {"My Game", "MyGame\n", NameDifference::WhiteSpace},
        {"My Game", "my  game", NameDifference::WhiteSpace},
        // Letter case and two encodings of one letter outside ASCII; a space outside ASCII.
        {"Caf\xC3\xA9", "caf\xC3\x89", NameDifference::OutsideAscii},
        {"Caf\xC3\xA9", "Cafe\xCC\x81", NameDifference::Other},
        {"My Game", "My\xC2\xA0Game", NameDifference::OutsideAscii},
        {"Game", "Games", NameDifference::Other},
        {"Game", "", NameDifference::Other},
    };
    for (const NamePair& pair : pairs) {
        EXPECT_EQ(DifferenceOf(pair.left, pair.right), pair.difference)
            << pair.left << " and " << pair.right;
        EXPECT_EQ(DifferenceOf(pair.right, pair.left), pair.difference)
            << pair.right << " and " << pair.left;
    }
}

}  // namespace
}  // namespace sealkeeper
