#include "platform/large_pages.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fault/fault_injection.h"

namespace sealkeeper {
namespace {

constexpr std::size_t kLeastBytes = std::size_t{8} << 20U;

class LargePages : public testing::Test {
  protected:
    void SetUp() override {
#ifndef MADV_HUGEPAGE
        GTEST_SKIP() << "the system takes no wish for large pages";
#endif
    }
};

TEST_F(LargePages, AreWishedForTheWholePagesOfLargeMemory) {
    const auto pageBytes = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::vector<std::uint8_t> memory(kLeastBytes + 2 * pageBytes);
    const auto begin = reinterpret_cast<std::uintptr_t>(memory.data());
    const std::size_t toPage = (pageBytes - begin % pageBytes) % pageBytes;
    for (const std::size_t pastPage : {std::size_t{0}, std::size_t{1}, pageBytes - 1}) {
        std::uint8_t* const start = memory.data() + toPage + pastPage;
        const std::uint8_t* const page = memory.data() + toPage + (pastPage == 0 ? 0 : pageBytes);
        PreferLargePages(start, kLeastBytes);
        const test::MemoryRange wished = test::LastLargePages();
        EXPECT_EQ(wished.start, page);
        EXPECT_EQ(static_cast<const std::uint8_t*>(wished.start) + wished.bytes,
                  start + kLeastBytes);
    }
}

TEST_F(LargePages, AreNotWishedForLittleMemory) {
    std::vector<std::uint8_t> memory(kLeastBytes);
    const test::MemoryRange before = test::LastLargePages();
    PreferLargePages(memory.data(), kLeastBytes - 1);
    PreferLargePages(memory.data(), 0);
    EXPECT_EQ(test::LastLargePages().start, before.start);
    EXPECT_EQ(test::LastLargePages().bytes, before.bytes);
}

}  // namespace
}  // namespace sealkeeper
