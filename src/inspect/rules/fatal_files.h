// Files of a selection that end generate.
#ifndef SEALKEEPER_INSPECT_RULES_FATAL_FILES_H
#define SEALKEEPER_INSPECT_RULES_FATAL_FILES_H

#include <optional>

#include "catalogue/path_alias.h"
#include "inspect/rules/rules_report.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// Whether the path has more UTF-16 units than a catalogue has room for.
[[nodiscard]] bool IsTooLong(const SelectedFile& file);

// Whether it has only by what one of `aliases` puts into it, which takes four bytes a character.
[[nodiscard]] bool IsTooLongByAlias(const SelectedFile& file, const AliasMap& aliases);

// Whether the file, which lies below the current directory, has content that this user may not
// read.
[[nodiscard]] bool IsForbidden(const SelectedFile& file);

// Why generate fails at a file of `selection`; nothing when it does not.
[[nodiscard]] std::optional<Refusal> FindFatalFile(const Selection& selection);

}  // namespace sealkeeper

#endif
