#include "platform/large_pages.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <vector>

// glibc declares it as not throwing; a definition must repeat it.
#ifdef __GLIBC__
#define SEALKEEPER_NOTHROW noexcept
#else
#define SEALKEEPER_NOTHROW
#endif

#ifdef MADV_HUGEPAGE

namespace sealkeeper {
namespace {

struct Advice {
    std::uintptr_t start = 0;
    std::size_t bytes = 0;
};

// The last wish for large pages, and how many there were.
constinit Advice g_lastAdvice;
constinit std::size_t g_advices = 0;

}  // namespace
}  // namespace sealkeeper

extern "C" int madvise(void* start, size_t bytes, int advice) SEALKEEPER_NOTHROW {
    if (advice == MADV_HUGEPAGE) {
        sealkeeper::g_lastAdvice = {reinterpret_cast<std::uintptr_t>(start), bytes};
        ++sealkeeper::g_advices;
    }
    // POSIX has dlsym return functions as object pointers.
    return reinterpret_cast<int (*)(void*, size_t, int)>(dlsym(RTLD_NEXT, "madvise"))(start, bytes,
                                                                                      advice);
}

namespace sealkeeper {
namespace {

constexpr std::size_t kLeastBytes = std::size_t{8} << 20U;

TEST(LargePages, AreWishedForTheWholePagesOfLargeMemory) {
    const auto pageBytes = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::vector<std::uint8_t> memory(kLeastBytes + 2 * pageBytes);
    const auto begin = reinterpret_cast<std::uintptr_t>(memory.data());
    const std::size_t toPage = (pageBytes - begin % pageBytes) % pageBytes;
    for (const std::size_t pastPage : {std::size_t{0}, std::size_t{1}, pageBytes - 1}) {
        g_advices = 0;
        std::uint8_t* const start = memory.data() + toPage + pastPage;
        const std::uintptr_t page = begin + toPage + (pastPage == 0 ? 0 : pageBytes);
        PreferLargePages(start, kLeastBytes);
        EXPECT_EQ(g_advices, 1U);
        EXPECT_EQ(g_lastAdvice.start, page);
        EXPECT_EQ(g_lastAdvice.start + g_lastAdvice.bytes,
                  reinterpret_cast<std::uintptr_t>(start) + kLeastBytes);
    }
}

TEST(LargePages, AreNotWishedForLittleMemory) {
    std::vector<std::uint8_t> memory(kLeastBytes);
    g_advices = 0;
    PreferLargePages(memory.data(), kLeastBytes - 1);
    PreferLargePages(memory.data(), 0);
    EXPECT_EQ(g_advices, 0U);
}

}  // namespace
}  // namespace sealkeeper

#endif
