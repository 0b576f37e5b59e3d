#include "app/console_log.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace sealkeeper {
namespace {

// The formatted message with its terminating zero.
constexpr std::size_t kMessageBufferBytes = 4096;

const char* LevelTag(LogLevel level) {
    switch (level) {
        case LogLevel::Error:
            return "Err!";
        case LogLevel::Warning:
            return "Warn";
        case LogLevel::Info:
            return "Info";
        case LogLevel::Verbose:
        case LogLevel::Trace:
            return "Verb";
    }
    return "<invalid>";
}

}  // namespace

LogLevel g_logThreshold = LogLevel::Info;

void Log(LogLevel level, const char* format, ...) {
    if (g_logThreshold < level) {
        return;
    }

    // Not filled: the message ends with a zero.
    std::array<char, kMessageBufferBytes> message;  // NOLINT: member initialisation
    std::va_list arguments;
    va_start(arguments, format);
    const int formattedLength = std::vsnprintf(message.data(), message.size(), format, arguments);
    va_end(arguments);
    if (formattedLength <= 0) {
        return;
    }

    const std::size_t shownLength =
        std::min(static_cast<std::size_t>(formattedLength), message.size() - 1);
    std::replace(message.begin(), message.begin() + static_cast<std::ptrdiff_t>(shownLength), '\\',
                 '/');
    std::fprintf(stdout, "[%s] ", LevelTag(level));
    std::fwrite(message.data(), 1, shownLength, stdout);
}

void WriteUntagged(const char* text) {
    std::fputs(text, stdout);
}

void EndConsoleLine() {
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace sealkeeper
