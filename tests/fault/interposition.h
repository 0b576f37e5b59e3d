// Shared by the functions that replace the real ones; see fault_injection.h.
#ifndef SEALKEEPER_TESTS_FAULT_INTERPOSITION_H
#define SEALKEEPER_TESTS_FAULT_INTERPOSITION_H

#include <dlfcn.h>

#include <cstddef>

#include "fault/fault_injection.h"

// glibc declares some of these functions noexcept, and a definition must repeat that.
#ifdef __GLIBC__
#define SEALKEEPER_NOTHROW noexcept
#else
#define SEALKEEPER_NOTHROW
#endif

namespace sealkeeper::test {

// Counts the call and returns whether it has to fail.
[[nodiscard]] bool Strikes(Call call);

// The value that the fault was armed with.
[[nodiscard]] int FaultValue(Call call);

// Sets errno for a call that the fault strikes, to `usualError` if it was armed without a value,
// and returns -1.
int Failure(Call call, int usualError);

void NoteAllocation(std::size_t bytes);

void NoteLargePages(const void* start, std::size_t bytes);

template <typename Function>
Function* Real(const char* name) {
    // POSIX has dlsym return functions as object pointers.
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace sealkeeper::test

#endif
