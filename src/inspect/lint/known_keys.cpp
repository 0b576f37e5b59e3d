#include "inspect/lint/known_keys.h"

#include <algorithm>
#include <array>

#include "config/config_names.h"

namespace sealkeeper {
namespace {

constexpr std::array<std::string_view, 3> kSections = {kInfoSection, kSearchSection,
                                                       kRuntimeSection};

constexpr std::array<KnownKey, 11> kKeys = {{
    {kInfoSection, kVersionKey, ConfigValueKind::Number, "2;"},
    {kSearchSection, kIncludePathsKey, ConfigValueKind::List, R"(["Content"])"},
    {kSearchSection, kExcludePathsKey, ConfigValueKind::List, R"(["Saved"])"},
    {kSearchSection, kExcludeExtensionsKey, ConfigValueKind::List, R"([".pdb"])"},
    {kSearchSection, kSizeThresholdKey, ConfigValueKind::Number, "1024;"},
    {kSearchSection, kIgnoreWithoutExtensionKey, ConfigValueKind::Flag, "true"},
    {kSearchSection, kAliasPathsKey, ConfigValueKind::PairTable, R"(( ["Old", "New"] );)"},
    {kSearchSection, kWorkingDirectoryKey, ConfigValueKind::String, ""},
    {kRuntimeSection, kMaxInstancesKey, ConfigValueKind::Number, "1;"},
    {kRuntimeSection, kAntiTamperKey, ConfigValueKind::String, R"("Generic")"},
    {kRuntimeSection, kCrashReporterKey, ConfigValueKind::String, R"("CrashReporter")"},
}};

}  // namespace

bool IsKnownSection(std::string_view name) {
    return std::find(kSections.begin(), kSections.end(), name) != kSections.end();
}

const KnownKey* FindKnownKey(std::string_view name) {
    const auto* found = std::find_if(kKeys.begin(), kKeys.end(),
                                     [name](const KnownKey& key) { return key.name == name; });
    return found == kKeys.end() ? nullptr : found;
}

const KnownKey* FindKnownKey(std::string_view section, std::string_view name) {
    const KnownKey* const key = FindKnownKey(name);
    return key != nullptr && key->section == section ? key : nullptr;
}

std::vector<std::string> KnownSectionNames() {
    return {kSections.begin(), kSections.end()};
}

std::vector<std::string> KnownKeyNames(std::string_view section) {
    std::vector<std::string> names;
    for (const KnownKey& key : kKeys) {
        if (key.section == section && key.name != kWorkingDirectoryKey) {
            names.emplace_back(key.name);
        }
    }
    return names;
}

bool TakesKind(const KnownKey& key, ConfigValueKind kind) {
    return key.kind == kind ||
           (key.kind == ConfigValueKind::Flag && kind == ConfigValueKind::Number);
}

std::string KindName(ConfigValueKind kind) {
    switch (kind) {
        case ConfigValueKind::List:
            return "a list";
        case ConfigValueKind::PairTable:
            return "a table of pairs";
        case ConfigValueKind::String:
            return "a text";
        case ConfigValueKind::Number:
            return "a number";
        case ConfigValueKind::Flag:
            return "true or false";
    }
    return {};
}

}  // namespace sealkeeper
