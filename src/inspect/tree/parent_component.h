// Detects ".." in paths.
#ifndef SEALKEEPER_INSPECT_TREE_PARENT_COMPONENT_H
#define SEALKEEPER_INSPECT_TREE_PARENT_COMPONENT_H

#include <string_view>

namespace sealkeeper {

// Whether ".." is a component of `path`, lexical or not.
[[nodiscard]] bool HasParentComponent(std::string_view path);

}  // namespace sealkeeper

#endif
