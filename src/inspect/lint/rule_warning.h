// Something in the rules that is likely not what was meant.
#ifndef SEALKEEPER_INSPECT_LINT_RULE_WARNING_H
#define SEALKEEPER_INSPECT_LINT_RULE_WARNING_H

#include <cstddef>
#include <string>
#include <vector>

namespace sealkeeper {

struct RuleWarning {
    // From 1, in bytes; both 0 for what stands at no place of the configuration file.
    std::size_t line = 0;
    std::size_t column = 0;
    // One sentence each.
    std::string message;
    std::string cure;
};

// What stands at no place comes first. Those of one place keep their order.
void SortByPlace(std::vector<RuleWarning>& warnings);

}  // namespace sealkeeper

#endif
