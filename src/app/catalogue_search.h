// Finds the catalogues of an installed game.
#ifndef SEALKEEPER_APP_CATALOGUE_SEARCH_H
#define SEALKEEPER_APP_CATALOGUE_SEARCH_H

#include <string>
#include <vector>

#include "app/result_code.h"

namespace sealkeeper {

// Sets `names` to those of everything in `directory`, which ends in '/' or is empty for the current
// one, that matches "*.bin", sorted as by POSIX `alphasort`. A name that begins with a dot does not
// match, and a directory does. None also when the directory is missing or must not be read. Fails
// with `SealkeeperIOError`, logged, when the system fails to read it.
ResultCode FindCatalogues(const std::string& directory, std::vector<std::wstring>& names);

}  // namespace sealkeeper

#endif
