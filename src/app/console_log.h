// The one console channel. Everything is written to standard output; there is no log file and
// nothing goes to standard error. Another program that uses the same code may take the messages.
#ifndef SEALKEEPER_APP_CONSOLE_LOG_H
#define SEALKEEPER_APP_CONSOLE_LOG_H

#include <cstdint>
#include <string_view>

namespace sealkeeper {

enum class LogLevel : std::uint32_t {
    Error = 1,
    Warning = 2,
    Info = 3,
    Verbose = 4,
    // Above every threshold that the program sets: silent trace points that are never shown.
    Trace = 5,
};

// The highest level that is shown. Starts at `Info`; the option -v raises it to `Verbose`.
extern LogLevel g_logThreshold;

// Writes "[tag] " and the formatted message, cut to its first 4095 bytes, with every backslash
// shown as a forward slash. No line feed is added: a message carries its own where it has one. An
// empty message, a message that cannot be formatted, and one above the threshold print nothing.
// Never fails visibly and does not flush.
//
// Where standard output is a terminal, control characters in the arguments are shown escaped, a
// line feed as "\x0a"; those of the format stay. So a format holds its line feeds itself. The cut
// comes first: an escape is whole.
#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
void Log(LogLevel level, const char* format, ...);

// Takes a message that is shown, as it was formatted: without its tag, with its own line feed.
using LogSink = void (*)(LogLevel level, std::string_view message);

// From now on `sink` takes the messages, and nothing below is written to standard output. Null
// gives that back.
void SendLogTo(LogSink sink);

// Writes `text` to standard output as it stands, without a tag and whatever the threshold.
void WriteUntagged(const char* text);

// Ends the console line: a line feed on standard output, flushed, because a person watches it.
void EndConsoleLine();

}  // namespace sealkeeper

#endif
