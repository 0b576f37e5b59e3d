// The allocators of the C library, which C++ and the C library's own functions use as well. The
// real ones are called by their glibc names: looking them up could itself allocate.
#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "fault/preload/fault_plan.h"

using sealkeeper::fault::CallCounter;

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) noexcept {
    static constinit CallCounter counter("malloc");
    if (const auto fault = counter.Next({})) {
        errno = fault->value;
        return nullptr;
    }
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    static constinit CallCounter counter("calloc");
    if (const auto fault = counter.Next({})) {
        errno = fault->value;
        return nullptr;
    }
    return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
    static constinit CallCounter counter("realloc");
    if (const auto fault = counter.Next({})) {
        errno = fault->value;
        return nullptr;
    }
    return __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    static constinit CallCounter counter("aligned_alloc");
    if (const auto fault = counter.Next({})) {
        errno = fault->value;
        return nullptr;
    }
    return __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    static constinit CallCounter counter("posix_memalign");
    if (const auto fault = counter.Next({})) {
        return fault->value;
    }
    *memory = __libc_memalign(alignment, size);
    return *memory == nullptr ? ENOMEM : 0;
}

}  // extern "C"
