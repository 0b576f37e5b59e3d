#include "config/file_collector.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "app/console_log.h"
#include "config/catalogue_rules.h"
#include "platform/directory_listing.h"
#include "platform/file_system.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

constexpr float kMaxLoadFactor = 1.0F;

// The pattern of a walk that starts at a path matched by an include pattern.
constexpr const char* kNamedDirectly = "";

// The extension of `name` with its dot; empty when there is no dot or the dot is the last
// character.
std::string ExtensionOf(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || dot + 1 == name.size()) {
        return {};
    }
    return name.substr(dot);
}

bool IsDirectoryItselfOrParent(const std::string& name) {
    return name == "." || name == "..";
}

void LogResolvedPaths(const PathSet& paths) {
    for (const std::string& path : paths) {
        // Deliberate: the wording is the same for included paths.
        Log(LogLevel::Verbose, "Excluded path: '%s'\n", path.c_str());
    }
}

void LogIfByExtension(SkipRule rule, const std::string& path) {
    if (rule == SkipRule::NoExtension) {
        Log(LogLevel::Trace, "Skipping file by rule ignore_files_without_extensions '%s'.\n",
            path.c_str());
    } else if (rule == SkipRule::ExcludedExtension) {
        Log(LogLevel::Trace, "Skipping file by rule exclude_extensions: '%s'.\n", path.c_str());
    }
}

}  // namespace

std::optional<SkipRule> RuleOfExtension(const CatalogueConfig& config, const std::string& name) {
    const std::string extension = ExtensionOf(name);
    if (extension.empty()) {
        return config.skipFilesWithoutExtension ? std::optional(SkipRule::NoExtension)
                                                : std::nullopt;
    }
    return config.excludedExtensions.contains(extension)
               ? std::optional(SkipRule::ExcludedExtension)
               : std::nullopt;
}

// What a walk has found so far.
struct FileCollector::Collection {
    std::vector<FoundFile>& files;
    // Null when no trace is wanted.
    CollectionTrace* trace = nullptr;

    void Add(const std::string& path, const FileStatus& status) {
        files.push_back({Utf8ToWide(path), status});
        if (trace != nullptr) {
            trace->paths.push_back(path);
        }
    }

    void Skip(const std::string& path, SkipRule rule) {
        if (trace != nullptr) {
            trace->skipped.push_back({path, rule});
        }
    }
};

FileCollector::FileCollector(std::string basePath, const FileTree& tree)
    : basePath_(std::move(basePath)), tree_(tree) {
    excludedPaths_.max_load_factor(kMaxLoadFactor);
    includedPaths_.max_load_factor(kMaxLoadFactor);
    config_.excludedExtensions.max_load_factor(kMaxLoadFactor);
}

ResultCode FileCollector::CollectFiles(const std::string& startPath, const std::string& pattern,
                                       std::vector<FoundFile>& files) const {
    Collection collection{files};
    return CollectInto(startPath, pattern, collection);
}

ResultCode FileCollector::CollectFilesTraced(const std::string& startPath,
                                             const std::string& pattern,
                                             std::vector<FoundFile>& files,
                                             CollectionTrace& trace) const {
    Collection collection{files, &trace};
    return CollectInto(startPath, pattern, collection);
}

ResultCode FileCollector::CollectInto(const std::string& startPath, const std::string& pattern,
                                      Collection& collection) const {
    if (includedPaths_.empty()) {
        return RecursePath(startPath, pattern, collection);
    }
    for (const std::string& path : includedPaths_) {
        if (const ResultCode code = RecursePath(path, kNamedDirectly, collection);
            code != ResultCode::Ok) {
            return code;
        }
    }
    return ResultCode::Ok;
}

std::string FileCollector::BasePath() const {
    return basePath_;
}

ResultCode FileCollector::ResolvePaths() {
    bool hasMatched = false;
    if (config_.includePaths.empty()) {
        if (const ResultCode code =
                GlobPaths(config_.excludePaths, excludedPaths_, hasMatched, tree_);
            code != ResultCode::Ok) {
            return code;
        }
        if (!hasMatched) {
            Log(LogLevel::Warning, "exclude_paths was specified but did not match any files.\n");
        }
        LogResolvedPaths(excludedPaths_);
        return ResultCode::Ok;
    }
    if (const ResultCode code = GlobPaths(config_.includePaths, includedPaths_, hasMatched, tree_);
        code != ResultCode::Ok) {
        return code;
    }
    if (!hasMatched) {
        Log(LogLevel::Error, "include_paths was specified but did not match any files.\n");
        return ResultCode::InitFailedConfig;
    }
    LogResolvedPaths(includedPaths_);
    return ResultCode::Ok;
}

void FileCollector::AddExcludedPath(const std::string& path) {
    excludedPaths_.insert(path);
}

ResultCode FileCollector::ApplyCatalogueRules(ConfigSection& searchOptions) {
    return ReadCatalogueRules(searchOptions, config_);
}

// The skip rules do not apply to a file that an include pattern matched.
ResultCode FileCollector::CollectNamedPath(const std::string& path, Collection& collection) const {
    FileStatus status;
    if (const ResultCode code = tree_.LookAtPath(path, status); code != ResultCode::Ok) {
        return code;
    }
    switch (status.type) {
        // An unknown type failed above.
        case FileType::Unknown:
        case FileType::Missing:
            Log(LogLevel::Error, "The following path couldn't be opened: '%s'. (%u)", path.c_str(),
                static_cast<unsigned>(errno));
            collection.Skip(path, SkipRule::OtherType);
            break;
        case FileType::Directory:
            return RecursePath(path + "/", kEveryFilePattern, collection);
        case FileType::Regular:
        case FileType::Fifo:
        case FileType::Socket:
        case FileType::Other:
            collection.Add(path, status);
            break;
    }
    return ResultCode::Ok;
}

ResultCode FileCollector::RecursePath(const std::string& startPath, const std::string& pattern,
                                      Collection& collection) const {
    if (pattern == kNamedDirectly) {
        return CollectNamedPath(startPath, collection);
    }
    // Here a backslash at the end is part of the directory's name, not a separator.
    const std::string directory = startPath.ends_with('/') ? startPath : startPath + "/";
    Log(LogLevel::Trace, "RecursePath '%s'.\n", (directory + pattern).c_str());
    std::optional<DirectoryEntries> entries;
    if (const ResultCode code = tree_.ReadDirectory(directory, entries); code != ResultCode::Ok) {
        return code;
    }
    if (!entries) {
        Log(LogLevel::Error, "Unable to open '%s'.\n", directory.c_str());
        collection.Skip(directory.substr(0, directory.size() - 1), SkipRule::Unlistable);
        return ResultCode::Ok;
    }
    SortEntries(*entries);
    for (auto entry = entries->rbegin(); entry != entries->rend(); ++entry) {
        if (const ResultCode code = CollectEntry(directory, *entry, pattern, collection);
            code != ResultCode::Ok) {
            return code;
        }
    }
    return ResultCode::Ok;
}

ResultCode FileCollector::CollectEntry(const std::string& directory, const DirectoryEntry& entry,
                                       const std::string& pattern, Collection& collection) const {
    if (IsDirectoryItselfOrParent(entry.name)) {
        return ResultCode::Ok;
    }
    const std::string path = directory + entry.name;
    if (entry.name.starts_with('.')) {
        collection.Skip(path, SkipRule::HiddenName);
        return ResultCode::Ok;
    }
    if (IsSkippedByPath(path)) {
        collection.Skip(path, SkipRule::ExcludedPath);
        return ResultCode::Ok;
    }
    FileStatus status;
    // Without a size rule no status is needed.
    if (config_.sizeThresholdBytes != 0) {
        if (entry.type == EntryType::Regular || entry.type == EntryType::Directory) {
            if (const ResultCode code = tree_.LookAtPath(path, status); code != ResultCode::Ok) {
                return code;
            }
        } else {
            // Never collected, so a link into a dead mount is not a failure.
            status = StatusOfPath(path);
        }
    }
    if (IsSkippedBySize(path, status)) {
        collection.Skip(path, SkipRule::SizeThreshold);
        return ResultCode::Ok;
    }
    if (entry.type == EntryType::Directory) {
        return RecursePath(path, pattern, collection);
    }
    const std::optional<SkipRule> rule = entry.type == EntryType::Regular
                                             ? RuleOfExtension(config_, entry.name)
                                             : SkipRule::OtherType;
    if (rule) {
        LogIfByExtension(*rule, path);
        collection.Skip(path, *rule);
    } else {
        collection.Add(path, status);
    }
    return ResultCode::Ok;
}

bool FileCollector::IsSkippedByPath(const std::string& path) const {
    if (excludedPaths_.contains(path)) {
        Log(LogLevel::Trace, "Skipping path by rule exclude_paths: '%s'.\n", path.c_str());
        return true;
    }
    return false;
}

bool FileCollector::IsSkippedBySize(const std::string& path, const FileStatus& status) const {
    if (config_.sizeThresholdBytes != 0 &&
        status.sizeBytes > static_cast<std::int64_t>(config_.sizeThresholdBytes)) {
        Log(LogLevel::Trace, "Skipping file by rule exclude_size_threshold: '%s'.\n", path.c_str());
        return true;
    }
    return false;
}

}  // namespace sealkeeper
