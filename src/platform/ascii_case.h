// Letter case of ASCII text.
#ifndef SEALKEEPER_PLATFORM_ASCII_CASE_H
#define SEALKEEPER_PLATFORM_ASCII_CASE_H

#include <string>

namespace sealkeeper {

// Lower-cases 'A' to 'Z' and leaves every other byte, whatever the locale.
void LowerCaseAscii(std::string& text);

}  // namespace sealkeeper

#endif
