// Finds out what there is to say of a catalogue.
#ifndef SEALKEEPER_INSPECT_SHOW_CATALOGUE_FACTS_H
#define SEALKEEPER_INSPECT_SHOW_CATALOGUE_FACTS_H

#include <optional>
#include <string>

#include "catalogue/catalogue_reader.h"
#include "inspect/show/shown_file.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

// Adds what is known of `file`, whose header is sound, to `shown`, which has its path. The
// signature in `file` may be zero afterwards. Returns what is wrong with the entry block, nothing
// when it is sound.
[[nodiscard]] std::optional<InvalidReason> AddCatalogueFacts(
    CatalogueFile& file, const std::optional<std::string>& productId, ShownFile& shown);

}  // namespace sealkeeper

#endif
