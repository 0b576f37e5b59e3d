// The end of processes that a test makes for what would spoil the one that all tests run in.
#ifndef SEALKEEPER_TESTS_SUPPORT_CHILD_PROCESS_H
#define SEALKEEPER_TESTS_SUPPORT_CHILD_PROCESS_H

namespace sealkeeper::test {

// Ends a process that a test made, with `status`, without the clean-up at the end of all tests,
// which their own process does. Writes what was run here where coverage is measured: every fault is
// to be taken back before.
[[noreturn]] void EndChild(int status);

}  // namespace sealkeeper::test

#endif
