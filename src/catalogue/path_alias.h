// Path aliases: parts of stored paths that the game knows by another name.
#ifndef SEALKEEPER_CATALOGUE_PATH_ALIAS_H
#define SEALKEEPER_CATALOGUE_PATH_ALIAS_H

#include <map>
#include <string>
#include <string_view>

#include "app/result_code.h"
#include "catalogue/catalogue_entry.h"

namespace sealkeeper {

// Maps a part of a path to its replacement.
using AliasMap = std::map<std::wstring, std::wstring>;

// Converts `aliases` from UTF-8 to wide text.
[[nodiscard]] AliasMap WideAliases(const std::map<std::string, std::string>& aliases);

// The first alias, in key order, whose key occurs anywhere in `path`; null when none does. An empty
// key never occurs.
const AliasMap::value_type* FirstAliasIn(const AliasMap& aliases, std::wstring_view path);

// Applies the alias that `FirstAliasIn` finds to every occurrence in the path of `entry`. Without
// one the entry stays unchanged. Deliberate quirk: the new path is stored with four bytes per
// character instead of two, and readers of aliased catalogues depend on it. Fails with
// `CatalogueError`, logged, when the new path does not fit its field.
ResultCode ApplyPathAlias(const AliasMap& aliases, CatalogueEntry& entry);

}  // namespace sealkeeper

#endif
