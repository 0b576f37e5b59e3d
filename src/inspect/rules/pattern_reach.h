// What each pattern of a selection leads to.
#ifndef SEALKEEPER_INSPECT_RULES_PATTERN_REACH_H
#define SEALKEEPER_INSPECT_RULES_PATTERN_REACH_H

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/rules/selection.h"
#include "inspect/tree/lexical_path.h"

namespace sealkeeper {

// Paths are lexical; see lexical_path.h. Patterns are numbered as in the list in use.
class PatternReach {
  public:
    explicit PatternReach(const Selection& selection);

    // How often each file is sealed.
    [[nodiscard]] const std::map<std::string, std::size_t, std::less<>>& Counts() const {
        return counts_;
    }

    // The patterns that match `path` or a directory above it.
    [[nodiscard]] std::vector<std::size_t> LeadingTo(std::string_view path) const;

    // The one of `patterns` that alone seals all that they seal. Of equal ones the first. Empty if
    // there is none, and where that is not certain, as with "..".
    [[nodiscard]] std::optional<std::size_t> ThatSealsAllOf(
        const std::vector<std::size_t>& patterns) const;

  private:
    [[nodiscard]] bool Leads(std::size_t pattern, std::string_view path) const;
    [[nodiscard]] bool Seals(std::size_t pattern, std::string_view file) const;
    [[nodiscard]] bool SealsAllOf(std::size_t pattern, std::size_t other) const;
    [[nodiscard]] bool SealsAllAt(std::size_t pattern, const std::string& match) const;
    [[nodiscard]] std::size_t WaysTo(std::string_view file) const;

    std::vector<LexicalPaths> matches_;
    // Whether a match of the pattern has "..", before which a link may have led elsewhere.
    std::vector<bool> goesBack_;
    std::map<std::string, std::size_t, std::less<>> counts_;
    // How many different paths with this lexical path the patterns match.
    std::map<std::string, std::size_t, std::less<>> spellings_;
};

}  // namespace sealkeeper

#endif
