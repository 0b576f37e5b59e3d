// Where the rules stand in the configuration file.
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
    // Of the patterns of the list in use, in their order.
    std::vector<TextPlace> patterns;
    // Of that list, and its key.
    TextPlace patternList;
    std::string patternKey;
    // By the name as the tool stores it.
    std::map<std::string, TextPlace> aliases;
    // By the text of the extension; the first where it stands twice.
    std::map<std::string, TextPlace> extensions;
    // Nothing where the file tells none.
    std::optional<TextPlace> sizeThreshold;
};

// Those of the section "search_options" in `text`, which `outline` is of.
[[nodiscard]] RulePlaces PlacesOfRules(std::string_view text, const ConfigOutline& outline);

}  // namespace sealkeeper

#endif
