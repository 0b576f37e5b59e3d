// Ends child processes, which tests fork for what would disturb the process that runs all tests.
#ifndef SEALKEEPER_TESTS_SUPPORT_CHILD_PROCESS_H
#define SEALKEEPER_TESTS_SUPPORT_CHILD_PROCESS_H

namespace sealkeeper::test {

// Ends a forked process with `status`, without the clean-up after all tests, which is up to the
// parent. If coverage is measured, writes that of this process; all injected faults must be removed
// before.
[[noreturn]] void EndChild(int status);

}  // namespace sealkeeper::test

#endif
