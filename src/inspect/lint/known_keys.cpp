#include "inspect/lint/known_keys.h"

#include <algorithm>
#include <array>

namespace sealkeeper {
namespace {

constexpr std::array<std::string_view, 3> kSections = {kInfoSection, kSearchSection,
                                                       kRuntimeSection};

constexpr std::array<KnownKey, 11> kKeys = {{
    {kInfoSection, kVersion, ConfigValueKind::Number, "2;"},
    {kSearchSection, kIncludePaths, ConfigValueKind::List, R"(["Content"])"},
    {kSearchSection, kExcludePaths, ConfigValueKind::List, R"(["Saved"])"},
    {kSearchSection, kExcludeExtensions, ConfigValueKind::List, R"([".pdb"])"},
    {kSearchSection, kSizeThreshold, ConfigValueKind::Number, "1024;"},
    {kSearchSection, kIgnoreWithoutExtension, ConfigValueKind::Flag, "true"},
    {kSearchSection, kAliasPaths, ConfigValueKind::PairTable, R"(( ["Old", "New"] );)"},
    {kSearchSection, kWorkingDirectory, ConfigValueKind::String, ""},
    {kRuntimeSection, kMaxInstances, ConfigValueKind::Number, "1;"},
    {kRuntimeSection, kAntiTamper, ConfigValueKind::String, R"("Generic")"},
    {kRuntimeSection, kCrashReporter, ConfigValueKind::String, R"("CrashReporter")"},
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
        if (key.section == section && key.name != kWorkingDirectory) {
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
