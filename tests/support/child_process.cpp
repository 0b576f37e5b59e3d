#include "support/child_process.h"

#include <cstdlib>

#ifdef SEALKEEPER_MEASURES_COVERAGE
// Declares C functions, which not every version of the header says.
extern "C" {
#include <gcov.h>
}
#endif

namespace sealkeeper::test {

void EndChild(int status) {
#ifdef SEALKEEPER_MEASURES_COVERAGE
    __gcov_dump();
#endif
    std::_Exit(status);
}

}  // namespace sealkeeper::test
