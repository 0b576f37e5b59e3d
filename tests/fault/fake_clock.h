// A steady clock that a test sets, so that no test has to wait.
#ifndef SEALKEEPER_TESTS_FAULT_FAKE_CLOCK_H
#define SEALKEEPER_TESTS_FAULT_FAKE_CLOCK_H

#include <chrono>

namespace sealkeeper::test {

// Stops the steady clock, of all code in the test executable, from its construction to its end. It
// never goes back from one such object to the next.
class FakeClock {
  public:
    FakeClock();
    FakeClock(const FakeClock&) = delete;
    FakeClock& operator=(const FakeClock&) = delete;
    ~FakeClock();

    // Moves the clock on once.
    void Advance(std::chrono::nanoseconds time);
    // Moves it on after each reading.
    void AdvanceAtEachReading(std::chrono::nanoseconds time);
};

}  // namespace sealkeeper::test

#endif
