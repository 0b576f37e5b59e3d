#include "inspect/lint/rule_warning.h"

#include <algorithm>
#include <tuple>

namespace sealkeeper {

void SortByPlace(std::vector<RuleWarning>& warnings) {
    std::stable_sort(
        warnings.begin(), warnings.end(), [](const RuleWarning& left, const RuleWarning& right) {
            return std::tie(left.line, left.column) < std::tie(right.line, right.column);
        });
}

}  // namespace sealkeeper
