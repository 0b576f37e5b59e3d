// Reads the file for `show`, and gathers everything but its entries.
#ifndef SEALKEEPER_INSPECT_SHOW_READ_FILE_H
#define SEALKEEPER_INSPECT_SHOW_READ_FILE_H

#include <optional>
#include <string>

#include "catalogue/catalogue_reader.h"
#include "inspect/show/shown_file.h"

namespace sealkeeper {

struct FileToShow {
    ShownFile shown;
    // Only for a valid catalogue.
    std::optional<CatalogueFile> catalogue;
};

// Reads the file at `path` and tells its kind by its first bytes, as `list` does. Checks the
// certificate for the product id if there is one. Empty if the file cannot be read; then `failure`
// says why, such as "cannot be read: No such file or directory".
[[nodiscard]] std::optional<FileToShow> ReadFileToShow(const std::string& path,
                                                       const std::optional<std::string>& productId,
                                                       std::string& failure);

}  // namespace sealkeeper

#endif
