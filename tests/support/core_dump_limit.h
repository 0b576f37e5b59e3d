// Whether the process may write core files, for tests of what switches them off.
#ifndef SEALKEEPER_TESTS_SUPPORT_CORE_DUMP_LIMIT_H
#define SEALKEEPER_TESTS_SUPPORT_CORE_DUMP_LIMIT_H

#include <sys/resource.h>

namespace sealkeeper::test {

// Sets the size of core files that the process may write to `bytes`, as far as it may have that.
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
