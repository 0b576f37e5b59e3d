// Finds files in a selection at which generate would fail.
#ifndef SEALKEEPER_INSPECT_RULES_FATAL_FILES_H
#define SEALKEEPER_INSPECT_RULES_FATAL_FILES_H

#include <optional>

#include "catalogue/path_alias.h"
#include "inspect/rules/rules_report.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// Whether the path has more UTF-16 units than fit into a catalogue.
[[nodiscard]] bool IsTooLong(const SelectedFile& file);

// Whether only an alias makes the path too long: it is stored with four bytes per character.
[[nodiscard]] bool IsTooLongByAlias(const SelectedFile& file, const AliasMap& aliases);

// Whether the file has content that this user may not read.
[[nodiscard]] bool IsForbidden(const SelectedFile& file);

// Whether it is one that this user may not read, but that has no content: generate reads nothing of
// it.
[[nodiscard]] bool IsForbiddenButEmpty(const SelectedFile& file);

// Why generate would fail at a file of `selection`, the first in the order in which it reads them;
// empty if it would not. Call after `LookAtWhatIsRead`.
[[nodiscard]] std::optional<Refusal> FindFatalFile(const Selection& selection);

}  // namespace sealkeeper

#endif
