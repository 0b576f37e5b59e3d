// The leading digits of a text. The tool reads nothing else of a number.
#ifndef SEALKEEPER_INSPECT_LINT_LEADING_DIGITS_H
#define SEALKEEPER_INSPECT_LINT_LEADING_DIGITS_H

#include <string_view>

namespace sealkeeper {

// Empty if `text` does not begin with a digit.
[[nodiscard]] std::string_view LeadingDigits(std::string_view text);

// Whether `text` consists of digits only and is not empty.
[[nodiscard]] bool IsWholeNumber(std::string_view text);

}  // namespace sealkeeper

#endif
