// A hint to the system, which does nothing on systems that do not know it.
#ifndef SEALKEEPER_PLATFORM_LARGE_PAGES_H
#define SEALKEEPER_PLATFORM_LARGE_PAGES_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace sealkeeper {

// Asks for large pages for memory that is about to be written for the first time, from start to
// end: it then takes far fewer page faults. Ranges under 8 MiB are left alone.
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
    // Best effort: without large pages only the speed differs.
    static_cast<void>(madvise(start + skipped, bytes - skipped, MADV_HUGEPAGE));
#endif
}

}  // namespace sealkeeper

#endif
