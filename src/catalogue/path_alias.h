// Path aliases: parts of a stored path that the game knows under another name.
#ifndef SEALKEEPER_CATALOGUE_PATH_ALIAS_H
#define SEALKEEPER_CATALOGUE_PATH_ALIAS_H

#include <map>
#include <string>
#include <string_view>

#include "app/result_code.h"
#include "catalogue/catalogue_entry.h"

namespace sealkeeper {

// From the part of a path that is replaced to what takes its place.
using AliasMap = std::map<std::wstring, std::wstring>;

// `aliases`, in UTF-8, as wide text.
[[nodiscard]] AliasMap WideAliases(const std::map<std::string, std::string>& aliases);

// The first alias, in key order, whose key occurs anywhere in `path`; null when none does. An empty
// key stands for nothing and occurs nowhere.
const AliasMap::value_type* FirstAliasIn(const AliasMap& aliases, std::wstring_view path);

// Replaces every occurrence of the first alias, in key order, that occurs anywhere in the path of
// `entry`; leaves the entry untouched when none does. A replaced path is stored at four bytes per
// character instead of two: this is deliberate and readers of aliased catalogues depend on it.
// Fails with `CatalogueError`, logged, when the new path does not fit its field.
ResultCode ApplyPathAlias(const AliasMap& aliases, CatalogueEntry& entry);

}  // namespace sealkeeper

#endif
