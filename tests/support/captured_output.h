// What the code under test writes to standard output.
#ifndef SEALKEEPER_TESTS_SUPPORT_CAPTURED_OUTPUT_H
#define SEALKEEPER_TESTS_SUPPORT_CAPTURED_OUTPUT_H

#include <cstdio>
#include <string>

#include "app/console_log.h"

namespace sealkeeper::test {

// Redirects standard output into a file from its construction to `Take`, or to its end.
class CapturedOutput {
  public:
    CapturedOutput();
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;
    ~CapturedOutput();

    // Ends the capture and returns everything written meanwhile.
    [[nodiscard]] std::string Take();

  private:
    void Restore();

    std::FILE* file_;
    int savedDescriptor_;
};

// Sets the console log's threshold for one test.
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
