// Makes untrusted text safe for a terminal.
#ifndef SEALKEEPER_INSPECT_REPORT_TERMINAL_SAFE_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_TERMINAL_SAFE_TEXT_H

#include <string>
#include <string_view>

namespace sealkeeper {

// Writes bytes as "\x" and two hexadecimal digits if they belong to control characters, as
// `EscapeControls` knows them, to line or paragraph separators, or to bidirectional controls. With
// the last, "gpj.exe" could be shown as another name.
[[nodiscard]] std::string TerminalSafeText(std::string_view text);

}  // namespace sealkeeper

#endif
