// Finds the values that the tool reads.
#ifndef SEALKEEPER_INSPECT_LINT_TYPED_VALUES_H
#define SEALKEEPER_INSPECT_LINT_TYPED_VALUES_H

#include <string>
#include <string_view>
#include <vector>

#include "inspect/lint/linted_text.h"

namespace sealkeeper {

// The values of `key` in `section` that are of that kind.
[[nodiscard]] std::vector<const OutlinedValue*> ValuesOfKind(const LintedText& linted,
                                                             std::string_view section,
                                                             std::string_view key,
                                                             ConfigValueKind kind);

// The elements of all lists of `key` in `section`.
[[nodiscard]] std::vector<OutlinedText> ElementsOf(const LintedText& linted,
                                                   std::string_view section, std::string_view key);

// Adds a finding about something missing from `section`: at the start of its last body, or without
// a place if there is none.
void AddAtSection(const LintedText& linted, std::string_view section, std::string message,
                  std::string cure, LintFindings& findings);

}  // namespace sealkeeper

#endif
