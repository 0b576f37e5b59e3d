// Text as a terminal is shown it. A terminal obeys control characters, and names that the program
// prints but did not choose may hold them: a line feed forges a line of the report, an escape
// sequence does worse.
#ifndef SEALKEEPER_APP_TERMINAL_TEXT_H
#define SEALKEEPER_APP_TERMINAL_TEXT_H

#include <cstdio>
#include <string>
#include <string_view>

namespace sealkeeper {

// Whether the first character of `text`, which is not empty, is a control character: one of C0,
// DEL, one of C1. A byte that belongs to no well-formed UTF-8 is a character of its own, because
// some terminals take such a one for a C1.
[[nodiscard]] bool BeginsWithControl(std::string_view text);

// `text` with each byte of a control character as "\x" and its two hexadecimal digits.
[[nodiscard]] std::string EscapeControls(std::string_view text);

// Writes `text`, escaped in the same way, to `stream`. A control character stays as it is where
// `marked`, which is as long, has another character: there it is the program's own. Takes no
// memory.
void WriteForTerminal(std::string_view text, std::string_view marked, std::FILE* stream);

}  // namespace sealkeeper

#endif
