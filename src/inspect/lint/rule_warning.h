// A likely mistake in the rules.
#ifndef SEALKEEPER_INSPECT_LINT_RULE_WARNING_H
#define SEALKEEPER_INSPECT_LINT_RULE_WARNING_H

#include <cstddef>
#include <string>
#include <vector>

namespace sealkeeper {

struct RuleWarning {
    // Counted from 1, in bytes. Both are 0 if it has no place in the configuration file.
    std::size_t line = 0;
    std::size_t column = 0;
    // One sentence in each.
    std::string message;
    std::string cure;
};

// A stable sort. Warnings without a place come first.
void SortByPlace(std::vector<RuleWarning>& warnings);

}  // namespace sealkeeper

#endif
