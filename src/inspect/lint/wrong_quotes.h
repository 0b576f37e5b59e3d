// Quotes that are none to the scan.
#ifndef SEALKEEPER_INSPECT_LINT_WRONG_QUOTES_H
#define SEALKEEPER_INSPECT_LINT_WRONG_QUOTES_H

#include <string_view>

namespace sealkeeper {

// Whether `text` begins with a quote as typed in other languages or as a word processor writes it.
[[nodiscard]] bool StartsWithWrongQuote(std::string_view text);

}  // namespace sealkeeper

#endif
