// How many processors this process can use.
#ifndef SEALKEEPER_PLATFORM_PROCESSORS_H
#define SEALKEEPER_PLATFORM_PROCESSORS_H

#include <cstddef>

namespace sealkeeper {

// The number of processors that this process may run on, if the system tells, else of all
// processors. At least 1.
[[nodiscard]] std::size_t CountProcessors();

}  // namespace sealkeeper

#endif
