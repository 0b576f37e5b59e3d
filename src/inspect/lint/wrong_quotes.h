// Quotation marks that the scanner does not know.
#ifndef SEALKEEPER_INSPECT_LINT_WRONG_QUOTES_H
#define SEALKEEPER_INSPECT_LINT_WRONG_QUOTES_H

#include <string_view>

namespace sealkeeper {

// Whether `text` begins with an apostrophe, a backtick or a typographic quotation mark.
[[nodiscard]] bool StartsWithWrongQuote(std::string_view text);

}  // namespace sealkeeper

#endif
