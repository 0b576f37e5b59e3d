#include "inspect/report/logged_error.h"

#include "app/console_log.h"

namespace sealkeeper {
namespace {

struct LoggedErrors {
    std::string first;
    std::string last;
};

LoggedErrors& Logged() {
    static LoggedErrors errors;
    return errors;
}

void KeepError(LogLevel level, std::string_view message) {
    if (level != LogLevel::Error) {
        return;
    }
    Logged().last = WithoutLineFeed(message);
    if (Logged().first.empty()) {
        Logged().first = Logged().last;
    }
}

}  // namespace

std::string WithoutLineFeed(std::string_view message) {
    return std::string(message.substr(0, message.find_last_not_of('\n') + 1));
}

const std::string& LastLoggedError() {
    return Logged().last;
}

const std::string& FirstLoggedError() {
    return Logged().first;
}

void ForgetLoggedError() {
    Logged() = {};
}

void KeepLogQuiet() {
    SendLogTo(KeepError);
}

}  // namespace sealkeeper
