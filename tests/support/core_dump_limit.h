// Sets the core file limit of the process, for tests of code that turns core files off.
#ifndef SEALKEEPER_TESTS_SUPPORT_CORE_DUMP_LIMIT_H
#define SEALKEEPER_TESTS_SUPPORT_CORE_DUMP_LIMIT_H

#include <sys/resource.h>

namespace sealkeeper::test {

// Sets the largest core file that the process may write to `bytes`, or to its hard limit if that is
// lower.
inline void LimitCoreDumps(rlim_t bytes) {
    rlimit limit{};
    getrlimit(RLIMIT_CORE, &limit);
    limit.rlim_cur = bytes < limit.rlim_max ? bytes : limit.rlim_max;
    setrlimit(RLIMIT_CORE, &limit);
}

[[nodiscard]] inline bool MayWriteCoreDumps() {
    rlimit limit{};
    getrlimit(RLIMIT_CORE, &limit);
    return limit.rlim_cur > 0;
}

}  // namespace sealkeeper::test

#endif
