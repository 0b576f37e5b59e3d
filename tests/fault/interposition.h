// What the functions put in place of the real ones have in common, see fault_injection.h.
#ifndef SEALKEEPER_TESTS_FAULT_INTERPOSITION_H
#define SEALKEEPER_TESTS_FAULT_INTERPOSITION_H

#include <dlfcn.h>

#include <cstddef>

#include "fault/fault_injection.h"

// glibc declares some of these functions as not throwing; a definition must repeat it.
#ifdef __GLIBC__
#define SEALKEEPER_NOTHROW noexcept
#else
#define SEALKEEPER_NOTHROW
#endif

namespace sealkeeper::test {

// Counts the call and tells whether it has to fail.
[[nodiscard]] bool Strikes(Call call);

// What the fault was armed with.
[[nodiscard]] int FaultValue(Call call);

// Sets errno for a call that the fault strikes, to `usualError` where it was armed with none, and
// returns -1.
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
