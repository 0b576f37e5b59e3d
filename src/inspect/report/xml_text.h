// Makes text fit for XML.
#ifndef SEALKEEPER_INSPECT_REPORT_XML_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_XML_TEXT_H

#include <string>
#include <string_view>

namespace sealkeeper {

// Writes as "\x" and two hexadecimal digits each byte that XML 1.0 cannot hold, not even as a
// character reference (2.2): control characters, bytes that are not UTF-8, U+FFFE and U+FFFF. Tabs
// and line ends are replaced too, since readers may normalise them in attributes (3.3.3).
[[nodiscard]] std::string XmlText(std::string_view text);

}  // namespace sealkeeper

#endif
