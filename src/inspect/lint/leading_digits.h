// The digits at the start of a text, which are all that the tool reads of a number.
#ifndef SEALKEEPER_INSPECT_LINT_LEADING_DIGITS_H
#define SEALKEEPER_INSPECT_LINT_LEADING_DIGITS_H

#include <string_view>

namespace sealkeeper {

// Empty where `text` begins with none.
[[nodiscard]] std::string_view LeadingDigits(std::string_view text);

// Whether `text` is digits and nothing else, and not empty.
[[nodiscard]] bool IsWholeNumber(std::string_view text);

}  // namespace sealkeeper

#endif
