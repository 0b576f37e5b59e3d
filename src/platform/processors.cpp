#include "platform/processors.h"

#include <sched.h>

#include <algorithm>
#include <thread>

namespace sealkeeper {

std::size_t CountProcessors() {
#ifdef CPU_COUNT
    // POSIX does not say how to ask where a process may run. Systems that define CPU_COUNT have
    // this call.
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    if (sched_getaffinity(0, sizeof(allowed), &allowed) == 0) {
        return static_cast<std::size_t>(std::max(CPU_COUNT(&allowed), 1));
    }
#endif
    return std::max(std::thread::hardware_concurrency(), 1U);
}

}  // namespace sealkeeper
