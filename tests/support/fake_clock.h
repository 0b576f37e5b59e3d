// A steady clock under the control of a test, so that no test has to wait.
#ifndef SEALKEEPER_TESTS_SUPPORT_FAKE_CLOCK_H
#define SEALKEEPER_TESTS_SUPPORT_FAKE_CLOCK_H

#include <chrono>

namespace sealkeeper::test {

// Stops the steady clock for all code in the test executable while it exists. Time never goes back
// from one object to the next.
class FakeClock {
  public:
    FakeClock();
    FakeClock(const FakeClock&) = delete;
    FakeClock& operator=(const FakeClock&) = delete;
    ~FakeClock();

    // Moves the clock on once.
    void Advance(std::chrono::nanoseconds time);
    // Moves the clock on after each reading.
    void AdvanceAtEachReading(std::chrono::nanoseconds time);
};

}  // namespace sealkeeper::test

#endif
