// Foreign text as a terminal may be shown it.
#ifndef SEALKEEPER_INSPECT_REPORT_TERMINAL_SAFE_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_TERMINAL_SAFE_TEXT_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `text` with each byte of a control character, as `EscapeControls` knows them, as "\x" and its two
// hexadecimal digits; and in the same way of what orders the text around it from right to left, by
// which "gpj.exe" is read as another name, and of line and paragraph separators.
[[nodiscard]] std::string TerminalSafeText(std::string_view text);

}  // namespace sealkeeper

#endif
