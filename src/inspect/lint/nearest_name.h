// "Did you mean".
#ifndef SEALKEEPER_INSPECT_LINT_NEAREST_NAME_H
#define SEALKEEPER_INSPECT_LINT_NEAREST_NAME_H

#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

// The one of `names` that `name` is most likely a slip for; empty when none is near. Near is up to
// one change in four characters; a change adds, removes or replaces a byte or swaps two neighbours.
[[nodiscard]] std::string NearestName(std::string_view name, const std::vector<std::string>& names);

}  // namespace sealkeeper

#endif
