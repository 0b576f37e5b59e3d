// Ends child processes. Tests fork them for actions that would disturb the test process.
#ifndef SEALKEEPER_TESTS_SUPPORT_CHILD_PROCESS_H
#define SEALKEEPER_TESTS_SUPPORT_CHILD_PROCESS_H

namespace sealkeeper::test {

// Ends a forked process with `status`, without the clean-up after all tests, which is the parent's.
// If coverage is measured, writes that of this process. All injected faults must be removed first.
[[noreturn]] void EndChild(int status);

}  // namespace sealkeeper::test

#endif
