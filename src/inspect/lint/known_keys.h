// The sections and keys that the tool looks for, and with which kinds of values.
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
    // A value, as it is written after the key.
    std::string_view example;
};

[[nodiscard]] bool IsKnownSection(std::string_view name);

// Null when no section has a key of that name. No two have the same.
[[nodiscard]] const KnownKey* FindKnownKey(std::string_view name);

// That of `section` alone.
[[nodiscard]] const KnownKey* FindKnownKey(std::string_view section, std::string_view name);

[[nodiscard]] std::vector<std::string> KnownSectionNames();
// What should be written in `section`: not what is refused.
[[nodiscard]] std::vector<std::string> KnownKeyNames(std::string_view section);

// Whether the tool looks at a value of that kind under `key`. A number is a flag as well.
[[nodiscard]] bool TakesKind(const KnownKey& key, ConfigValueKind kind);

// "a list" and so on.
[[nodiscard]] std::string KindName(ConfigValueKind kind);

}  // namespace sealkeeper

#endif
