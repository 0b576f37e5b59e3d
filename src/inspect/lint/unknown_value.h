// Explains what is wrong with a text that is no value.
#ifndef SEALKEEPER_INSPECT_LINT_UNKNOWN_VALUE_H
#define SEALKEEPER_INSPECT_LINT_UNKNOWN_VALUE_H

#include <cstddef>

#include "inspect/lint/linted_text.h"
#include "inspect/lint/name_trouble.h"

namespace sealkeeper {

// For the pending key of `linted`, whose value the scanner expected at `offset`.
[[nodiscard]] Trouble UnknownValueTrouble(const LintedText& linted, std::size_t offset);

}  // namespace sealkeeper

#endif
