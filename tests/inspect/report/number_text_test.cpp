#include "inspect/report/number_text.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

TEST(NumberText, GroupsDigitsByThrees) {
    EXPECT_EQ(GroupedNumber(0), "0");
    EXPECT_EQ(GroupedNumber(999), "999");
    EXPECT_EQ(GroupedNumber(1000), "1,000");
    EXPECT_EQ(GroupedNumber(1234567), "1,234,567");
    EXPECT_EQ(GroupedNumber(18446744073709551615U), "18,446,744,073,709,551,615");
}

TEST(NumberText, ShowsSizesInDecimalUnits) {
    EXPECT_EQ(SizeText(0), "0 bytes");
    EXPECT_EQ(SizeText(1), "1 byte");
    EXPECT_EQ(SizeText(999), "999 bytes");
    EXPECT_EQ(SizeText(1000), "1.0 kB");
    EXPECT_EQ(SizeText(4194304), "4.2 MB");
    EXPECT_EQ(SizeText(1024000000), "1.0 GB");
}

TEST(NumberText, NeverShowsAThousandOfAUnit) {
    EXPECT_EQ(SizeText(999949), "999.9 kB");
    EXPECT_EQ(SizeText(999999), "1.0 MB");
    EXPECT_EQ(SizeText(18446744073709551615U), "18.4 EB");
}

TEST(NumberText, CountsInSingularAndPlural) {
    EXPECT_EQ(CountText(0, "file"), "0 files");
    EXPECT_EQ(CountText(1, "file"), "1 file");
    EXPECT_EQ(CountText(20000, "file"), "20,000 files");
}

}  // namespace
}  // namespace sealkeeper
