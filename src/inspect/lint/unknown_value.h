// What stands for a value and is none.
#ifndef SEALKEEPER_INSPECT_LINT_UNKNOWN_VALUE_H
#define SEALKEEPER_INSPECT_LINT_UNKNOWN_VALUE_H

#include <cstddef>

#include "inspect/lint/linted_text.h"
#include "inspect/lint/name_trouble.h"

namespace sealkeeper {

// Of the pending key of `linted`, whose value the scan expected at `offset`.
[[nodiscard]] Trouble UnknownValueTrouble(const LintedText& linted, std::size_t offset);

}  // namespace sealkeeper

#endif
