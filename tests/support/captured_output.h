// Captures what the code under test writes to standard output.
#ifndef SEALKEEPER_TESTS_SUPPORT_CAPTURED_OUTPUT_H
#define SEALKEEPER_TESTS_SUPPORT_CAPTURED_OUTPUT_H

#include <cstdio>
#include <string>

#include "app/console_log.h"

namespace sealkeeper::test {

// Redirects standard output to a file from construction until `Take` or destruction.
class CapturedOutput {
  public:
    CapturedOutput();
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;
    ~CapturedOutput();

    // Ends the capture and returns everything that was written.
    [[nodiscard]] std::string Take();

  private:
    void Restore();

    std::FILE* file_;
    int savedDescriptor_;
};

// Sets the threshold of the console log for its lifetime.
class ScopedLogThreshold {
  public:
    explicit ScopedLogThreshold(LogLevel threshold) : previous_(g_logThreshold) {
        g_logThreshold = threshold;
    }
    ScopedLogThreshold(const ScopedLogThreshold&) = delete;
    ScopedLogThreshold& operator=(const ScopedLogThreshold&) = delete;
    ~ScopedLogThreshold() { g_logThreshold = previous_; }

  private:
    LogLevel previous_;
};

}  // namespace sealkeeper::test

#endif
