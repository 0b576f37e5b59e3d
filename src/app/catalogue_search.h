// Finds the catalogues of an installed game.
#ifndef SEALKEEPER_APP_CATALOGUE_SEARCH_H
#define SEALKEEPER_APP_CATALOGUE_SEARCH_H

#include <string>
#include <vector>

#include "app/result_code.h"

namespace sealkeeper {

// Sets `names` to the names in `directory` that match "*.bin", in the order of POSIX `alphasort`.
// `directory` ends in '/' or is empty for the current one. Names that begin with a dot do not
// match; directories do. `names` is empty when the directory is missing or permission to read it is
// denied. Fails with `SealkeeperIOError`, logged, when the system fails to read it.
ResultCode FindCatalogues(const std::string& directory, std::vector<std::wstring>& names);

// Whether a name that `FindCatalogues` set is that of the file. It is an error text, which names no
// file, where that is not UTF-8.
[[nodiscard]] bool IsNameOfCatalogue(const std::wstring& name);

}  // namespace sealkeeper

#endif
