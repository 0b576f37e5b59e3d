#include "platform/memory_exhaustion.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <stdexcept>

namespace sealkeeper {
namespace {

constexpr int kStatus = 7;

int Report() {
    std::fputs("no memory\n", stderr);
    return kStatus;
}

// As where nobody may catch it.
template <typename Exception>
[[noreturn]] void EndBy(const Exception& exception) {
    EndOutOfMemoryBy(Report);
    try {
        throw Exception(exception);
    } catch (...) {
        std::terminate();
    }
}

[[noreturn]] void EndWithoutException() {
    EndOutOfMemoryBy(Report);
    std::terminate();
}

TEST(MemoryExhaustionDeathTest, IsAnAllocationThatFailed) {
    EXPECT_EXIT(EndBy(std::bad_alloc()), testing::ExitedWithCode(kStatus), "^no memory\n$");
    EXPECT_EXIT(EndBy(std::bad_array_new_length()), testing::ExitedWithCode(kStatus),
                "^no memory\n$");
}

TEST(MemoryExhaustionDeathTest, IsAnEndWithoutAnException) {
    EXPECT_EXIT(EndWithoutException(), testing::ExitedWithCode(kStatus), "^no memory\n$");
}

TEST(MemoryExhaustionDeathTest, IsNoOtherException) {
    EXPECT_EXIT(EndBy(std::runtime_error("a mistake")), testing::KilledBySignal(SIGABRT),
                "a mistake");
}

}  // namespace
}  // namespace sealkeeper
