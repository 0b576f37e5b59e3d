// Allocation functions that fail on demand.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "fault/interposition.h"

namespace {

void* Allocate(std::size_t size, std::size_t alignment) {
    sealkeeper::test::NoteAllocation(size);
    void* memory = nullptr;
    if (sealkeeper::test::Strikes(sealkeeper::test::Call::Allocation) ||
        posix_memalign(&memory, alignment, size > 0 ? size : 1) != 0) {
        throw std::bad_alloc();
    }
    return memory;
}

}  // namespace

// All forms, including those without exceptions. What one allocates another may free, and some
// sanitizers bring their own versions of any form missing here.
void* operator new(std::size_t size) {
    return Allocate(size, alignof(std::max_align_t));
}

void* operator new[](std::size_t size) {
    return Allocate(size, alignof(std::max_align_t));
}

void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
    return operator new(size, std::nothrow);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}

void* operator new[](std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/,
                       std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
