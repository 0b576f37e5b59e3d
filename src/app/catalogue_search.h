// Finds the catalogues of an installed game.
#ifndef SEALKEEPER_APP_CATALOGUE_SEARCH_H
#define SEALKEEPER_APP_CATALOGUE_SEARCH_H

#include <string>
#include <vector>

namespace sealkeeper {

// The names of everything in `directory`, which ends in '/', that matches "*.bin", in the order in
// which POSIX `glob` gives them. A name that begins with a dot does not match, and a directory
// does. Empty also when the directory cannot be read.
[[nodiscard]] std::vector<std::wstring> FindCatalogues(const std::string& directory);

}  // namespace sealkeeper

#endif
