// Path aliases: parts of a stored path that the game knows under another name.
#ifndef SEALKEEPER_CATALOGUE_PATH_ALIAS_H
#define SEALKEEPER_CATALOGUE_PATH_ALIAS_H

#include "app/result_code.h"
#include "catalogue/alias_matcher.h"
#include "catalogue/catalogue_entry.h"

namespace sealkeeper {

// Replaces every occurrence of the first alias, in key order, that occurs anywhere in the path of
// `entry`; leaves the entry untouched when none does. A replaced path is stored at four bytes per
// character instead of two: this is deliberate and readers of aliased catalogues depend on it.
// Fails with `CatalogueError`, logged, when the new path does not fit its field.
ResultCode ApplyPathAlias(const AliasMatcher& aliases, CatalogueEntry& entry);

}  // namespace sealkeeper

#endif
