#include "platform/memory_exhaustion.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace sealkeeper {
namespace {

template <typename Exception>
bool IsWantOfMemory(const Exception& exception) {
    try {
        throw exception;  // NOLINT: by value, to be caught as what it is
    } catch (...) {
        return IsEndingForWantOfMemory();
    }
}

TEST(MemoryExhaustion, IsAnAllocationThatFailed) {
    EXPECT_TRUE(IsWantOfMemory(std::bad_alloc()));
    EXPECT_TRUE(IsWantOfMemory(std::bad_array_new_length()));
}

TEST(MemoryExhaustion, IsNoOtherException) {
    EXPECT_FALSE(IsWantOfMemory(std::runtime_error("another")));
    EXPECT_FALSE(IsWantOfMemory(1));
}

TEST(MemoryExhaustion, IsAnEndWithoutAnException) {
    EXPECT_TRUE(IsEndingForWantOfMemory());
}

}  // namespace
}  // namespace sealkeeper
