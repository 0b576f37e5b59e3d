#include "app/console_log.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include "app/terminal_text.h"

namespace sealkeeper {
namespace {

// The formatted message with its terminating zero.
constexpr std::size_t kMessageBufferBytes = 4096;

using MessageBuffer = std::array<char, kMessageBufferBytes>;

// What a line of this level begins with.
const char* LinePrefix(LogLevel level) {
    switch (level) {
        case LogLevel::Error:
            return "[Err!] ";
        case LogLevel::Warning:
            return "[Warn] ";
        case LogLevel::Info:
            return "[Info] ";
        case LogLevel::Verbose:
        case LogLevel::Trace:
            return "[Verb] ";
    }
    return "[<invalid>] ";
}

// The message, cut to what fits; empty when it cannot be formatted.
std::string_view FormatInto(MessageBuffer& buffer, const char* format, std::va_list arguments) {
    const int length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    if (length <= 0) {
        return {};
    }
    return {buffer.data(), std::min(static_cast<std::size_t>(length), buffer.size() - 1)};
}

// `format`, cut to what a message has room for, with every control character replaced by another
// character. A message formatted with it differs from the original only at the control characters
// that come from the format itself.
MessageBuffer WithoutControls(std::string_view format) {
    MessageBuffer marked{};
    const std::string_view shown = format.substr(0, marked.size() - 1);
    std::transform(shown.begin(), shown.end(), marked.begin(), [](char character) {
        return BeginsWithControl({&character, 1}) ? '?' : character;
    });
    return marked;
}

// Checked once: standard output does not change while the program runs.
bool IsTerminal() {
    static const bool isTerminal = isatty(STDOUT_FILENO) == 1;
    return isTerminal;
}

// Null while messages go to standard output.
LogSink g_sink = nullptr;

void WriteToTerminal(std::string_view message, const char* format, std::va_list arguments) {
    const MessageBuffer markedFormat = WithoutControls(format);
    MessageBuffer marked;  // NOLINT: member initialisation
    WriteForTerminal(message, FormatInto(marked, markedFormat.data(), arguments), stdout);
}

}  // namespace

LogLevel g_logThreshold = LogLevel::Info;

void Log(LogLevel level, const char* format, ...) {
    if (g_logThreshold < level) {
        return;
    }

    // Uninitialised: formatting writes the message and its terminating zero.
    MessageBuffer buffer;  // NOLINT: member initialisation
    std::va_list arguments;
    va_start(arguments, format);
    const std::string_view message = FormatInto(buffer, format, arguments);
    va_end(arguments);
    if (message.empty()) {
        return;
    }

    std::replace(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(message.size()), '\\',
                 '/');
    if (g_sink != nullptr) {
        g_sink(level, message);
        return;
    }
    std::fputs(LinePrefix(level), stdout);
    if (!IsTerminal()) {
        std::fwrite(message.data(), 1, message.size(), stdout);
        return;
    }
    va_start(arguments, format);
    WriteToTerminal(message, format, arguments);
    va_end(arguments);
}

void SendLogTo(LogSink sink) {
    g_sink = sink;
}

void WriteUntagged(const char* text) {
    if (g_sink == nullptr) {
        std::fputs(text, stdout);
    }
}

void EndConsoleLine() {
    if (g_sink == nullptr) {
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}

}  // namespace sealkeeper
