// The names of the sections and keys of a configuration file, in lower case, as they are stored.
#ifndef SEALKEEPER_CONFIG_CONFIG_NAMES_H
#define SEALKEEPER_CONFIG_CONFIG_NAMES_H

namespace sealkeeper {

inline constexpr const char* kInfoSection = "config_info";
inline constexpr const char* kVersionKey = "version";

inline constexpr const char* kSearchSection = "search_options";
inline constexpr const char* kIncludePathsKey = "include_paths";
inline constexpr const char* kExcludePathsKey = "exclude_paths";
inline constexpr const char* kExcludeExtensionsKey = "exclude_extensions";
inline constexpr const char* kSizeThresholdKey = "exclude_size_threshold";
inline constexpr const char* kIgnoreWithoutExtensionKey = "ignore_files_without_extension";
inline constexpr const char* kAliasPathsKey = "alias_paths";
// Known only so that it can be rejected.
inline constexpr const char* kWorkingDirectoryKey = "working_directory";

inline constexpr const char* kRuntimeSection = "runtime_configuration";
inline constexpr const char* kMaxInstancesKey = "max_active_game_instances";
inline constexpr const char* kAntiTamperKey = "anti_tamper_solution_name";
inline constexpr const char* kCrashReporterKey = "crash_reporter_name";

}  // namespace sealkeeper

#endif
