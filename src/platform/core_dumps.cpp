#include "platform/core_dumps.h"

#include <sys/resource.h>

namespace sealkeeper {

void SwitchOffCoreDumps() {
    // Lowering a limit is open to every process.
    constexpr rlimit kNone{0, 0};
    static_cast<void>(setrlimit(RLIMIT_CORE, &kNone));
}

}  // namespace sealkeeper
