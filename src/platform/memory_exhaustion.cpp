#include "platform/memory_exhaustion.h"

#include <exception>
#include <new>

namespace sealkeeper {

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

}  // namespace sealkeeper
