#include "inspect/rules/lint_text.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

TEST(LintText, NamesTheFirstFew) {
    EXPECT_EQ(Quoted({"a"}), "'a'");
    EXPECT_EQ(Quoted({"a", "b"}), "'a' and 'b'");
    EXPECT_EQ(Quoted({"a", "b", "c"}), "'a', 'b' and 'c'");
    EXPECT_EQ(Quoted({"a", "b", "c", "d"}), "'a', 'b', 'c' and 1 more");
}

}  // namespace
}  // namespace sealkeeper
