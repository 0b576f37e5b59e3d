// Keeps a test's console free of what the tool's own code logs.
#ifndef SEALKEEPER_TESTS_SUPPORT_QUIET_LOG_H
#define SEALKEEPER_TESTS_SUPPORT_QUIET_LOG_H

#include "app/console_log.h"
#include "inspect/report/logged_error.h"

namespace sealkeeper::test {

// Until its end, logged errors go to the functions of inspect/report/logged_error.h alone, which
// know of none at first. One at a time.
class QuietLog {
  public:
    QuietLog() {
        KeepLogQuiet();
        ForgetLoggedError();
    }
    QuietLog(const QuietLog&) = delete;
    QuietLog& operator=(const QuietLog&) = delete;
    ~QuietLog() { SendLogTo(nullptr); }
};

}  // namespace sealkeeper::test

#endif
