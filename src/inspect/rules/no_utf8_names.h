// Files whose names are no UTF-8. Generate reads and lists in their place what the text names that
// a failed conversion leaves.
#ifndef SEALKEEPER_INSPECT_RULES_NO_UTF8_NAMES_H
#define SEALKEEPER_INSPECT_RULES_NO_UTF8_NAMES_H

#include <optional>
#include <string>

#include "inspect/rules/rules_report.h"

namespace sealkeeper {

// That text, a path from the game directory.
inline constexpr const char* kNoUtf8StandIn = "U82W_ERROR";

// Why generate fails at the stand-in, of which the current directory, the game directory, may have
// one; nothing where it does not. One that is missing is listed as an empty file.
[[nodiscard]] std::optional<Refusal> RefusalOfStandIn();

}  // namespace sealkeeper

#endif
