#include <gtest/gtest.h>

#include <limits>

#include "inspect/report/aligned_text.h"
#include "inspect/report/capped_sum.h"
#include "inspect/report/hex_text.h"
#include "inspect/report/name_list.h"

namespace sealkeeper {
namespace {

TEST(AlignedText, IsFilledUpWithBlanks) {
    EXPECT_EQ(AlignedLeft("ab", 4), "ab  ");
    EXPECT_EQ(AlignedRight("ab", 4), "  ab");
}

TEST(AlignedText, IsNotCut) {
    EXPECT_EQ(AlignedLeft("abc", 2), "abc");
    EXPECT_EQ(AlignedRight("abc", 2), "abc");
}

TEST(NameList, JoinsTheLastByAWord) {
    EXPECT_EQ(NameList({}), "");
    EXPECT_EQ(NameList({"a"}), "a");
    EXPECT_EQ(NameList({"a", "b"}), "a and b");
    EXPECT_EQ(QuotedNameList({"a", "b", "c"}), "'a', 'b' and 'c'");
}

TEST(NameList, CountsThoseThatItDoesNotName) {
    EXPECT_EQ(NameList({"a", "b", "c"}, 3), "a, b and c");
    EXPECT_EQ(QuotedNameList({"a", "b", "c"}, 2), "'a', 'b' and 1 more");
    EXPECT_EQ(QuotedNameList(std::vector<std::string>(1002, "a"), 1), "'a' and 1,001 more");
}

TEST(HexText, HasTwoDigitsForEachByte) {
    EXPECT_EQ(HexText(std::string_view("\x00\x0A\xFF", 3)), "000aff");
    EXPECT_EQ(HexText(std::string_view()), "");
}

TEST(HexText, SeparatesTheBytes) {
    const std::uint8_t bytes[] = {0x00, 0x0A, 0xFF};
    EXPECT_EQ(SeparatedHexText(bytes), "00 0A FF");
    EXPECT_EQ(SeparatedHexText(bytes, ':'), "00:0A:FF");
    EXPECT_EQ(SeparatedHexText({}), "");
}

TEST(CappedSum, IsAtMostWhatTheTypeHolds) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(CappedSum(1, 2), 3U);
    EXPECT_EQ(CappedSum(kLargest - 1, 1), kLargest);
    EXPECT_EQ(CappedSum(kLargest, 1), kLargest);
    EXPECT_EQ(CappedSum(kLargest, kLargest), kLargest);
}

}  // namespace
}  // namespace sealkeeper
