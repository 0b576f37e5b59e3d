// The sections and keys that the tool reads, and the kinds of their values.
#ifndef SEALKEEPER_INSPECT_LINT_KNOWN_KEYS_H
#define SEALKEEPER_INSPECT_LINT_KNOWN_KEYS_H

#include <string>
#include <string_view>
#include <vector>

#include "config/config_outline.h"

namespace sealkeeper {

struct KnownKey {
    std::string_view section;
    std::string_view name;
    ConfigValueKind kind;
    // A value as it is written after the key.
    std::string_view example;
};

[[nodiscard]] bool IsKnownSection(std::string_view name);

// Null if no section has the key. Key names are unique across sections.
[[nodiscard]] const KnownKey* FindKnownKey(std::string_view name);

// Only a key of `section`.
[[nodiscard]] const KnownKey* FindKnownKey(std::string_view section, std::string_view name);

[[nodiscard]] std::vector<std::string> KnownSectionNames();
// The keys to suggest for `section`, without those that the tool refuses.
[[nodiscard]] std::vector<std::string> KnownKeyNames(std::string_view section);

// Whether the tool reads a value of that kind under `key`. A number also counts as a flag.
[[nodiscard]] bool TakesKind(const KnownKey& key, ConfigValueKind kind);

// "a list" and so on.
[[nodiscard]] std::string KindName(ConfigValueKind kind);

}  // namespace sealkeeper

#endif
