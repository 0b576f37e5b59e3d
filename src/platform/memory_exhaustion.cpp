#include "platform/memory_exhaustion.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace sealkeeper {
namespace {

std::terminate_handler g_replaced = nullptr;
int (*g_report)() = nullptr;

// The C++ library ends a process without an exception where it has no memory for one.
bool IsEndingForWantOfMemory() {
    if (std::current_exception() == nullptr) {
        return true;
    }
    try {
        throw;  // Unlike std::rethrow_exception, this allocates nothing.
    } catch (const std::bad_alloc&) {
        return true;
    } catch (...) {
        return false;
    }
}

[[noreturn]] void EndProcess() {
    if (IsEndingForWantOfMemory()) {
        const int status = g_report();
        std::fflush(stdout);
        std::_Exit(status);
    }
    g_replaced();
    std::abort();
}

}  // namespace

std::terminate_handler EndOutOfMemoryBy(int (*report)()) {
    g_report = report;
    g_replaced = std::set_terminate(EndProcess);
    return g_replaced;
}

}  // namespace sealkeeper
