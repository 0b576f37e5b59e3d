// Reads the file that `show` is to show, and finds out all but its entries.
#ifndef SEALKEEPER_INSPECT_SHOW_READ_FILE_H
#define SEALKEEPER_INSPECT_SHOW_READ_FILE_H

#include <optional>
#include <string>

#include "catalogue/catalogue_reader.h"
#include "inspect/show/shown_file.h"

namespace sealkeeper {

struct FileToShow {
    ShownFile shown;
    // The catalogue, where the file is a valid one.
    std::optional<CatalogueFile> catalogue;
};

// Reads the file at `path`; its kind is told as `list` tells it, by its first bytes. Where there is
// a product id, the certificate is checked for it. Nothing when the file cannot be read, and
// `failure` then says why, as "cannot be read: No such file or directory".
[[nodiscard]] std::optional<FileToShow> ReadFileToShow(const std::string& path,
                                                       const std::optional<std::string>& productId,
                                                       std::string& failure);

}  // namespace sealkeeper

#endif
