#include "inspect/tree/parent_component.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

TEST(ParentComponent, IsAWholeOne) {
    for (const char* const path : {"..", "../a", "a/..", "a/../b", "a//../b", "/..", "../"}) {
        EXPECT_TRUE(HasParentComponent(path)) << path;
    }
    for (const char* const path : {"", ".", "/", "a", "...", "..a/b", "a../b", "a/.../b"}) {
        EXPECT_FALSE(HasParentComponent(path)) << path;
    }
}

}  // namespace
}  // namespace sealkeeper
