// What lies in a directory, by absolute paths without links, dot components and a slash at their
// end. The directory may be "/".
#ifndef SEALKEEPER_INSPECT_TREE_PATH_BELOW_H
#define SEALKEEPER_INSPECT_TREE_PATH_BELOW_H

#include <optional>
#include <string_view>

namespace sealkeeper {

// The path that leads from `directory` to `path`, a part of that; nothing where `path` is not below
// `directory`, which itself is not.
[[nodiscard]] std::optional<std::string_view> PathBelow(std::string_view path,
                                                        std::string_view directory);

[[nodiscard]] bool IsBelow(std::string_view path, std::string_view directory);

}  // namespace sealkeeper

#endif
