// Makes untrusted text safe for HTML.
#ifndef SEALKEEPER_INSPECT_RULES_HTML_TEXT_H
#define SEALKEEPER_INSPECT_RULES_HTML_TEXT_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `text` for use between tags. Markup characters become references. What `TerminalSafeText`
// escapes, such as control characters and bidirectional controls, is escaped the same way. Bytes
// that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string HtmlText(std::string_view text);

}  // namespace sealkeeper

#endif
