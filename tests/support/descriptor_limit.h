// A limit on open files for the duration of a test.
#ifndef SEALKEEPER_TESTS_SUPPORT_DESCRIPTOR_LIMIT_H
#define SEALKEEPER_TESTS_SUPPORT_DESCRIPTOR_LIMIT_H

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace sealkeeper::test {

// Leaves the process a few more descriptors than it has open.
class ScopedDescriptorLimit {
  public:
    ScopedDescriptorLimit() {
        EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &before_), 0);
        const int lowestFree = dup(STDOUT_FILENO);
        EXPECT_EQ(close(lowestFree), 0);
        rlimit limited = before_;
        limited.rlim_cur = static_cast<rlim_t>(lowestFree) + 3;
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &limited), 0);
    }
    ScopedDescriptorLimit(const ScopedDescriptorLimit&) = delete;
    ScopedDescriptorLimit& operator=(const ScopedDescriptorLimit&) = delete;
    ~ScopedDescriptorLimit() { EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &before_), 0); }

  private:
    rlimit before_{};
};

}  // namespace sealkeeper::test

#endif
