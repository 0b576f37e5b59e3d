// Text that XML can hold.
#ifndef SEALKEEPER_INSPECT_REPORT_XML_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_XML_TEXT_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `text` with "\x" and two hexadecimal digits in place of each byte of what XML 1.0 cannot hold,
// not even as a character reference (2.2): control characters, what is no UTF-8, U+FFFE and U+FFFF.
// Tabs and line ends, which readers may change in attributes (3.3.3), are replaced as well.
[[nodiscard]] std::string XmlText(std::string_view text);

}  // namespace sealkeeper

#endif
