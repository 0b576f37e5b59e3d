// Text of others in HTML.
#ifndef SEALKEEPER_INSPECT_RULES_HTML_TEXT_H
#define SEALKEEPER_INSPECT_RULES_HTML_TEXT_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `text` as it stands between tags: markup is taken for text, control characters are escaped as a
// terminal is shown them, and what is no UTF-8 becomes U+FFFD.
[[nodiscard]] std::string HtmlText(std::string_view text);

}  // namespace sealkeeper

#endif
