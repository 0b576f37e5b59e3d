// Recognises a process that ends because it ran out of memory.
#ifndef SEALKEEPER_PLATFORM_MEMORY_EXHAUSTION_H
#define SEALKEEPER_PLATFORM_MEMORY_EXHAUSTION_H

namespace sealkeeper {

// For a terminate handler: true if the process ends with std::bad_alloc, or with no exception at
// all. The latter is what the C++ library does when it has no memory for the exception either.
[[nodiscard]] bool IsEndingForWantOfMemory();

}  // namespace sealkeeper

#endif
