// Tells what lies below a directory. Paths are absolute, without links, dot components and trailing
// slashes. The directory may be "/".
#ifndef SEALKEEPER_INSPECT_TREE_PATH_BELOW_H
#define SEALKEEPER_INSPECT_TREE_PATH_BELOW_H

#include <optional>
#include <string_view>

namespace sealkeeper {

// The part of `path` after `directory`. Empty if `path` is not below `directory`; a directory is
// not below itself.
[[nodiscard]] std::optional<std::string_view> PathBelow(std::string_view path,
                                                        std::string_view directory);

[[nodiscard]] bool IsBelow(std::string_view path, std::string_view directory);

}  // namespace sealkeeper

#endif
