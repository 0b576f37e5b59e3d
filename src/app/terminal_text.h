// Text made safe for a terminal. A terminal obeys control characters, and names that come from
// outside may contain them: a line feed forges a line of the report, and an escape sequence can do
// worse.
#ifndef SEALKEEPER_APP_TERMINAL_TEXT_H
#define SEALKEEPER_APP_TERMINAL_TEXT_H

#include <cstdio>
#include <string>
#include <string_view>

namespace sealkeeper {

// Whether the first character of `text`, which must not be empty, is a control character: C0, DEL
// or C1. A byte that is not part of well-formed UTF-8 is a character of its own, because some
// terminals take such a byte for a C1 control.
[[nodiscard]] bool BeginsWithControl(std::string_view text);

// `text` with each byte of a control character written as "\x" and two hexadecimal digits.
[[nodiscard]] std::string EscapeControls(std::string_view text);

// Writes `text`, escaped in the same way, to `stream`. A control character is kept where `marked`,
// which has the same length, has another character: there it is the program's own. Allocates no
// memory.
void WriteForTerminal(std::string_view text, std::string_view marked, std::FILE* stream);

}  // namespace sealkeeper

#endif
