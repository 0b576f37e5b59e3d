// The positions of the rules in the configuration file.
#ifndef SEALKEEPER_INSPECT_RULES_RULE_PLACES_H
#define SEALKEEPER_INSPECT_RULES_RULE_PLACES_H

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/config_outline.h"
#include "config/text_place.h"

namespace sealkeeper {

struct RulePlaces {
    // The patterns of the list in use, in file order.
    std::vector<TextPlace> patterns;
    // The list in use, and its key.
    TextPlace patternList;
    std::string patternKey;
    // Keyed by the name in the form in which the tool stores it.
    std::map<std::string, TextPlace> aliases;
    // Keyed by the extension. The first place if it occurs twice.
    std::map<std::string, TextPlace> extensions;
    // Empty if the file does not set one.
    std::optional<TextPlace> sizeThreshold;
};

// The positions in the section "search_options" of `text`. `outline` belongs to `text`.
[[nodiscard]] RulePlaces PlacesOfRules(std::string_view text, const ConfigOutline& outline);

}  // namespace sealkeeper

#endif
