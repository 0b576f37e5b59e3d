// A hint to the system that costs nothing where it is not understood.
#ifndef SEALKEEPER_PLATFORM_LARGE_PAGES_H
#define SEALKEEPER_PLATFORM_LARGE_PAGES_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace sealkeeper {

// Asks for large pages under memory that is about to be written for the first time from start to
// end: the system then hands it out in far fewer steps. Less than a few large pages are left alone.
inline void PreferLargePages([[maybe_unused]] std::uint8_t* start,
                             [[maybe_unused]] std::size_t bytes) {
#ifdef MADV_HUGEPAGE
    constexpr std::size_t kLeastBytes = std::size_t{8} << 20U;
    const long pageBytes = sysconf(_SC_PAGESIZE);
    if (bytes < kLeastBytes || pageBytes <= 0) {
        return;
    }
    const auto page = static_cast<std::size_t>(pageBytes);
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(start) % page;  // NOLINT
    const std::size_t skipped = offset == 0 ? 0 : page - offset;
    // Without large pages all is the same but slower, so a failure needs no answer.
    static_cast<void>(madvise(start + skipped, bytes - skipped, MADV_HUGEPAGE));
#endif
}

}  // namespace sealkeeper

#endif
