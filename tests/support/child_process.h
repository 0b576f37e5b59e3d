// The end of processes that a test makes for what would spoil the one that all tests run in.
#ifndef SEALKEEPER_TESTS_SUPPORT_CHILD_PROCESS_H
#define SEALKEEPER_TESTS_SUPPORT_CHILD_PROCESS_H

namespace sealkeeper::test {

// Ends this process, a copy of that of the tests, with `status` and without what they leave for
// their end: that is done once, by the process that they run in. What ran here counts all the same
// where coverage is measured, so no call may be made to fail any more and files can be written.
[[noreturn]] void EndChild(int status);

}  // namespace sealkeeper::test

#endif
