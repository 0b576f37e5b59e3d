#include "inspect/lint/leading_digits.h"

namespace sealkeeper {

std::string_view LeadingDigits(std::string_view text) {
    return text.substr(0, text.find_first_not_of("0123456789"));
}

bool IsWholeNumber(std::string_view text) {
    return !text.empty() && LeadingDigits(text).size() == text.size();
}

}  // namespace sealkeeper
