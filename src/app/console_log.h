// The one console channel. Everything is written to standard output; there is no log file and
// nothing goes to standard error. Another program that uses this code may receive the messages
// instead.
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
// shown as a forward slash. No line feed is added; a message that ends its line contains one. An
// empty message, a message that cannot be formatted, and one above the threshold print nothing. A
// failed write is ignored. Nothing is flushed.
//
// Where standard output is a terminal, control characters in the arguments are shown escaped, a
// line feed as "\x0a"; those of the format are kept, so intended line feeds belong in the format.
// The message is cut before it is escaped, so no escape is cut in two.
#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
void Log(LogLevel level, const char* format, ...);

// Receives each message that the threshold lets pass, as formatted: without a tag, with its own
// line feed if any.
using LogSink = void (*)(LogLevel level, std::string_view message);

// From now on `sink` receives the messages, and nothing declared here writes to standard output.
// Null restores standard output.
void SendLogTo(LogSink sink);

// Writes `text` to standard output as it stands, without a tag and whatever the threshold.
void WriteUntagged(const char* text);

// Ends the console line: writes a line feed to standard output and flushes, because a person may be
// watching.
void EndConsoleLine();

}  // namespace sealkeeper

#endif
