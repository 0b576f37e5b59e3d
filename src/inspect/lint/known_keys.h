// The sections and keys that the tool looks for, and with which kinds of values.
#ifndef SEALKEEPER_INSPECT_LINT_KNOWN_KEYS_H
#define SEALKEEPER_INSPECT_LINT_KNOWN_KEYS_H

#include <string>
#include <string_view>
#include <vector>

#include "config/config_outline.h"

namespace sealkeeper {

inline constexpr std::string_view kInfoSection = "config_info";
inline constexpr std::string_view kSearchSection = "search_options";
inline constexpr std::string_view kRuntimeSection = "runtime_configuration";

inline constexpr std::string_view kVersion = "version";
inline constexpr std::string_view kIncludePaths = "include_paths";
inline constexpr std::string_view kExcludePaths = "exclude_paths";
inline constexpr std::string_view kExcludeExtensions = "exclude_extensions";
inline constexpr std::string_view kSizeThreshold = "exclude_size_threshold";
inline constexpr std::string_view kIgnoreWithoutExtension = "ignore_files_without_extension";
inline constexpr std::string_view kAliasPaths = "alias_paths";
// Known, so that it can be refused.
inline constexpr std::string_view kWorkingDirectory = "working_directory";
inline constexpr std::string_view kMaxInstances = "max_active_game_instances";
inline constexpr std::string_view kAntiTamper = "anti_tamper_solution_name";
inline constexpr std::string_view kCrashReporter = "crash_reporter_name";

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
