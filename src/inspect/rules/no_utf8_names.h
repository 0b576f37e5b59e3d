// Files whose names are not UTF-8. Generate reads and lists in their place what the text names that
// a failed conversion leaves.
#ifndef SEALKEEPER_INSPECT_RULES_NO_UTF8_NAMES_H
#define SEALKEEPER_INSPECT_RULES_NO_UTF8_NAMES_H

#include <optional>
#include <string>

#include "app/result_code.h"
#include "inspect/rules/rules_report.h"
#include "platform/file_system.h"

namespace sealkeeper {

// That text, a path from the game directory.
inline constexpr const char* kNoUtf8StandIn = "U82W_ERROR";

// What has that name in the game, if anything. One that is missing is listed as an empty file.
struct StandIn {
    FileType type = FileType::Missing;
    // Why generate fails at it; empty if it does not.
    std::optional<Refusal> refusal;
};

// Looks at it in the current directory, the game directory. Fails as `JudgeLookError` does.
ResultCode LookAtStandIn(StandIn& standIn);

}  // namespace sealkeeper

#endif
