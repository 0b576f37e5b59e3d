// Gathers what `show` reports about a catalogue.
#ifndef SEALKEEPER_INSPECT_SHOW_CATALOGUE_FACTS_H
#define SEALKEEPER_INSPECT_SHOW_CATALOGUE_FACTS_H

#include <optional>
#include <string>

#include "catalogue/catalogue_reader.h"
#include "inspect/show/shown_file.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

// Adds the facts about `file` to `shown`. The header of `file` must be sound and `shown` must have
// the path. May clear the signature in `file`. Returns what is wrong with the entry block; empty if
// it is sound.
[[nodiscard]] std::optional<InvalidReason> AddCatalogueFacts(
    CatalogueFile& file, const std::optional<std::string>& productId, ShownFile& shown);

}  // namespace sealkeeper

#endif
