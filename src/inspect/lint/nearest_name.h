// Finds the name for "did you mean".
#ifndef SEALKEEPER_INSPECT_LINT_NEAREST_NAME_H
#define SEALKEEPER_INSPECT_LINT_NEAREST_NAME_H

#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

// The one of `names` that `name` is most likely a slip for; empty if none is near. One change is
// allowed for every four characters. A change adds, removes or replaces a byte, or swaps two
// neighbours.
[[nodiscard]] std::string NearestName(std::string_view name, const std::vector<std::string>& names);

}  // namespace sealkeeper

#endif
