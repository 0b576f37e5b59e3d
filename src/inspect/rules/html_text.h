// Text of others in HTML.
#ifndef SEALKEEPER_INSPECT_RULES_HTML_TEXT_H
#define SEALKEEPER_INSPECT_RULES_HTML_TEXT_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `text` as it stands between tags: markup is taken for text; what `TerminalSafeText` escapes, such
// as control characters and what turns the order of the text round, is escaped in the same way; and
// what is no UTF-8 becomes U+FFFD.
[[nodiscard]] std::string HtmlText(std::string_view text);

}  // namespace sealkeeper

#endif
