#include "platform/core_dumps.h"

#include <sys/resource.h>

namespace sealkeeper {

void SwitchOffCoreDumps() {
    rlimit limit{};
    static_cast<void>(getrlimit(RLIMIT_CORE, &limit));
    // Every process may lower its own limit.
    limit.rlim_cur = 0;
    static_cast<void>(setrlimit(RLIMIT_CORE, &limit));
}

}  // namespace sealkeeper
