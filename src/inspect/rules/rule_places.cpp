#include "inspect/rules/rule_places.h"

#include "config/config_names.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

// The key of the list in use: include_paths, unless the file has a list exclude_paths.
std::string_view ListInUse(const ConfigOutline& outline) {
    for (const OutlinedValue* const value : ValuesOf(outline, kSearchSection, kExcludePathsKey)) {
        if (value->kind == ConfigValueKind::List) {
            return kExcludePathsKey;
        }
    }
    return kIncludePathsKey;
}

template <typename TakeText>
void ForEachText(const ConfigOutline& outline, std::string_view key, ConfigValueKind kind,
                 TakeText take) {
    for (const OutlinedValue* const value : ValuesOf(outline, kSearchSection, key)) {
        if (value->kind != kind) {
            continue;
        }
        for (std::size_t i = 0; i < value->texts.size(); ++i) {
            take(value->texts[i], i);
        }
    }
}

}  // namespace

RulePlaces PlacesOfRules(std::string_view text, const ConfigOutline& outline) {
    RulePlaces places;
    const TextLines lines(text);
    const auto placeOf = [&lines](const OutlinedText& outlined) {
        return lines.PlaceOf(outlined.begin);
    };
    const std::string_view list = ListInUse(outline);
    places.patternKey = list;
    ForEachText(outline, list, ConfigValueKind::List,
                [&](const OutlinedText& pattern, std::size_t /*index*/) {
                    places.patterns.push_back(placeOf(pattern));
                });
    if (const auto values = ValuesOf(outline, kSearchSection, list); !values.empty()) {
        places.patternList = lines.PlaceOf(values.front()->begin);
    }
    ForEachText(outline, kExcludeExtensionsKey, ConfigValueKind::List,
                [&](const OutlinedText& extension, std::size_t /*index*/) {
                    places.extensions.emplace(extension.text, placeOf(extension));
                });
    ForEachText(outline, kAliasPathsKey, ConfigValueKind::PairTable,
                [&](const OutlinedText& nameOrValue, std::size_t index) {
                    if (index % 2 == 0) {
                        places.aliases.emplace(WithForwardSlashes(nameOrValue.text),
                                               placeOf(nameOrValue));
                    }
                });
    for (const OutlinedValue* const value : ValuesOf(outline, kSearchSection, kSizeThresholdKey)) {
        if (value->kind == ConfigValueKind::Number) {
            places.sizeThreshold = lines.PlaceOf(value->begin);
        }
    }
    return places;
}

}  // namespace sealkeeper
