// How many processors there are for this process.
#ifndef SEALKEEPER_PLATFORM_PROCESSORS_H
#define SEALKEEPER_PLATFORM_PROCESSORS_H

#include <cstddef>

namespace sealkeeper {

// The processors that this process may run on, where the system tells, else those that are there;
// at least 1.
[[nodiscard]] std::size_t CountProcessors();

}  // namespace sealkeeper

#endif
