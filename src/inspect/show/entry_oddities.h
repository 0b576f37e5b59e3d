// Finds what readers accept in an entry, but writers never write or nobody wants.
#ifndef SEALKEEPER_INSPECT_SHOW_ENTRY_ODDITIES_H
#define SEALKEEPER_INSPECT_SHOW_ENTRY_ODDITIES_H

#include <string>
#include <vector>

#include "catalogue/entry_record_reader.h"
#include "inspect/show/stored_path.h"

namespace sealkeeper {

// One line of text each, without a full stop. `path` is the path in `record`.
[[nodiscard]] std::vector<std::string> OdditiesOf(const RecordStart& record,
                                                  const StoredPath& path);

}  // namespace sealkeeper

#endif
