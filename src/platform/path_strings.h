// Small helpers for path strings. They look only at the text, never at the file system.
#ifndef SEALKEEPER_PLATFORM_PATH_STRINGS_H
#define SEALKEEPER_PLATFORM_PATH_STRINGS_H

#include <string>
#include <string_view>

namespace sealkeeper {

// Appends '/' unless `path` is empty or already ends in '/' or a backslash.
void EnsureTrailingSeparator(std::string& path);
void EnsureTrailingSeparatorWide(std::wstring& path);

// Appends '/' unless `path` ends in one. For paths from the system, in which a backslash is part of
// a name.
void EnsureTrailingSlash(std::string& path);

// Replaces the first occurrence of `find` in `text` by `replacement` and returns true; returns
// false when there is none. An empty `find` inserts the replacement at the start.
bool ReplaceFirst(std::string& text, std::string_view find, std::string_view replacement);

// `path` with every backslash replaced by '/'.
[[nodiscard]] std::string WithForwardSlashes(std::string path);

// The part of `path` after the last '/' or backslash, or the whole path when that part is empty.
[[nodiscard]] std::string BaseName(const std::string& path);

}  // namespace sealkeeper

#endif
