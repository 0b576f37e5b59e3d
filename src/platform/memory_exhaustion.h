// The end of a process that has no memory left.
#ifndef SEALKEEPER_PLATFORM_MEMORY_EXHAUSTION_H
#define SEALKEEPER_PLATFORM_MEMORY_EXHAUSTION_H

#include <exception>

namespace sealkeeper {

// Sets a terminate handler for what no caller can catch: a std::bad_alloc that is thrown where
// exceptions are forbidden, and one that cannot even be thrown for want of memory. It calls
// `report`, which tells the user and returns the exit status, and ends the process with that
// status. It runs no destructors, so a temporary file stays. All else ends the process as before.
// Returns the handler that it replaced.
std::terminate_handler EndOutOfMemoryBy(int (*report)());

}  // namespace sealkeeper

#endif
