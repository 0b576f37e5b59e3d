#include "config/catalogue_rules.h"

#include <cstddef>

#include "app/console_log.h"
#include "config/config_names.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

// The version of a file that does not state one.
constexpr std::int64_t kImpliedConfigVersion = 1;

void WarnOfUnusualSizeThreshold(ConfigSection& options) {
    if (!options.integers.Has(kSizeThresholdKey)) {
        return;
    }
    // A negative number wraps to a huge one.
    const auto megabytes = static_cast<std::uint64_t>(options.integers.Get(kSizeThresholdKey));
    if (megabytes > kRecommendedMaximumMegabytes) {
        Log(LogLevel::Warning,
            "exclude_size_threshold exceeds the recommended maximum value of %llu MB, this is very likely to cause issues for end-users!\n",
            static_cast<unsigned long long>(kRecommendedMaximumMegabytes));
    } else if (megabytes < kRecommendedMinimumMegabytes) {
        Log(LogLevel::Warning,
            "exclude_size_threshold is below the recommended minimum value of %llu MB, this is very likely to cause issues for end-users!\n",
            static_cast<unsigned long long>(kRecommendedMinimumMegabytes));
    }
}

// Each key is looked up in the table of its type: a key with a value of another type counts as
// absent.
ResultCode ValidateSearchOptions(ConfigSection& options) {
    WarnOfUnusualSizeThreshold(options);

    const bool hasExcludes = options.stringLists.Has(kExcludePathsKey);
    const bool hasIncludes = options.stringLists.Has(kIncludePathsKey);
    if (hasExcludes && hasIncludes) {
        Log(LogLevel::Error,
            "Both include_paths and exclude_paths are specified, only one is allowed.\n");
        return ResultCode::InitFailedConfig;
    }
    if (!hasExcludes && !hasIncludes) {
        Log(LogLevel::Error, "Either include_paths or exclude_paths must be specified.\n");
        return ResultCode::InitFailedConfig;
    }
    if (options.stringLists.Has(kAliasPathsKey)) {
        Log(LogLevel::Error,
            "alias_paths is invalid. It must be in a list & array format( [\"orig1\",\"repl1\"], [\"orig2\",\"repl2\"] ); ... ).\n");
        return ResultCode::InitFailedConfig;
    }
    if (options.flags.Has(kIgnoreWithoutExtensionKey) &&
        options.flags.Get(kIgnoreWithoutExtensionKey)) {
        Log(LogLevel::Warning, "ignore_files_without_extension flag has been set.\n");
    }
    return ResultCode::Ok;
}

bool LeavesGameDirectory(const std::string& path) {
    return path.find("..") != std::string::npos || path.find(':') != std::string::npos;
}

ResultCode ReadPathAliases(const StringPairs& pairs, CatalogueConfig& config) {
    for (const auto& [name, value] : pairs) {
        if (LeavesGameDirectory(name) || LeavesGameDirectory(value)) {
            Log(LogLevel::Error,
                "alias_paths is invalid. '..' and ':' are not allowed.All paths are relative to working_directory.\n");
            return ResultCode::InitFailedConfig;
        }
        config.pathAliases.emplace(WithForwardSlashes(name), WithForwardSlashes(value));
    }
    return ResultCode::Ok;
}

ResultCode FailToLoad(const std::string& path) {
    Log(LogLevel::Error, "Could not load or parse the configuration file: '%s'.\n", path.c_str());
    return ResultCode::InitFailedConfig;
}

}  // namespace

ResultCode CheckConfigVersion(const std::string& path, ConfigDocument& document) {
    return document.LoadConfigFile(path) ? CheckDocumentVersion(document) : FailToLoad(path);
}

ResultCode CheckConfigText(const std::string& path, std::string_view text,
                           ConfigDocument& document) {
    return document.ParseConfigText(text) ? CheckDocumentVersion(document) : FailToLoad(path);
}

ResultCode CheckDocumentVersion(ConfigDocument& document) {
    std::string sectionName = kInfoSection;
    ConfigSection& info = document.GetSection(sectionName);
    const std::int64_t version =
        info.integers.Has(kVersionKey) ? info.integers.Get(kVersionKey) : kImpliedConfigVersion;
    if (version != kSupportedConfigVersion) {
        Log(LogLevel::Error, "Unsupported config file version: %zu.\n",
            static_cast<std::size_t>(version));
        return ResultCode::InitFailedConfig;
    }
    Log(LogLevel::Info, "Using config version: %d.\n", static_cast<int>(version));
    return ResultCode::Ok;
}

ResultCode ReadCatalogueRules(ConfigSection& searchOptions, CatalogueConfig& config) {
    if (const ResultCode code = ValidateSearchOptions(searchOptions); code != ResultCode::Ok) {
        return code;
    }
    if (searchOptions.strings.Has(kWorkingDirectoryKey)) {
        Log(LogLevel::Error,
            "working_directory found in the .cfg file, please update the file and provide this through arguments instead.");
        return ResultCode::InitFailedConfig;
    }
    if (searchOptions.integers.Has(kSizeThresholdKey)) {
        config.sizeThresholdBytes =
            static_cast<std::uint64_t>(searchOptions.integers.Get(kSizeThresholdKey)) *
            kBytesPerMegabyte;
    }
    if (searchOptions.stringLists.Has(kExcludePathsKey)) {
        config.excludePaths = searchOptions.stringLists.Get(kExcludePathsKey);
    } else {
        config.includePaths = searchOptions.stringLists.Get(kIncludePathsKey);
    }
    if (searchOptions.stringLists.Has(kExcludeExtensionsKey)) {
        const StringList& extensions = searchOptions.stringLists.Get(kExcludeExtensionsKey);
        config.excludedExtensions.insert(extensions.begin(), extensions.end());
    }
    if (searchOptions.stringPairTables.Has(kAliasPathsKey)) {
        const ResultCode code =
            ReadPathAliases(searchOptions.stringPairTables.Get(kAliasPathsKey), config);
        if (code != ResultCode::Ok) {
            return code;
        }
    }
    config.skipFilesWithoutExtension = searchOptions.flags.Has(kIgnoreWithoutExtensionKey) &&
                                       searchOptions.flags.Get(kIgnoreWithoutExtensionKey);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
