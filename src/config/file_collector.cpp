#include "config/file_collector.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "app/console_log.h"
#include "config/catalogue_rules.h"
#include "platform/directory_listing.h"
#include "platform/file_system.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

constexpr float kMaxLoadFactor = 1.0F;

// The pattern of a walk that begins at a path which an include pattern named.
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

void LogResolvedPaths(const PathSet& paths) {
    for (const std::string& path : paths) {
        // The same wording for included paths is deliberate.
        Log(LogLevel::Verbose, "Excluded path: '%s'\n", path.c_str());
    }
}

}  // namespace

FileCollector::FileCollector(std::string basePath) : basePath_(std::move(basePath)) {
    excludedPaths_.max_load_factor(kMaxLoadFactor);
    includedPaths_.max_load_factor(kMaxLoadFactor);
    config_.excludedExtensions.max_load_factor(kMaxLoadFactor);
}

void FileCollector::CollectFiles(const std::string& startPath, const std::string& pattern,
                                 std::vector<FoundFile>& files) const {
    if (includedPaths_.empty()) {
        RecursePath(startPath, pattern, files);
        return;
    }
    for (const std::string& path : includedPaths_) {
        RecursePath(path, kNamedDirectly, files);
    }
}

std::string FileCollector::BasePath() const {
    return basePath_;
}

bool FileCollector::ResolvePaths() {
    if (config_.includePaths.empty()) {
        if (!GlobPaths(config_.excludePaths, excludedPaths_)) {
            Log(LogLevel::Warning, "exclude_paths was specified but did not match any files.\n");
        }
        LogResolvedPaths(excludedPaths_);
        return true;
    }
    if (!GlobPaths(config_.includePaths, includedPaths_)) {
        Log(LogLevel::Error, "include_paths was specified but did not match any files.\n");
        return false;
    }
    LogResolvedPaths(includedPaths_);
    return true;
}

void FileCollector::AddExcludedPath(const std::string& path) {
    excludedPaths_.insert(path);
}

ResultCode FileCollector::ApplyCatalogueRules(ConfigSection& searchOptions) {
    return ReadCatalogueRules(searchOptions, config_);
}

// A file named directly is taken whatever the skip rules say.
void FileCollector::CollectNamedPath(const std::string& path, std::vector<FoundFile>& files) const {
    switch (GetFileType(path)) {
        case FileType::Missing:
            Log(LogLevel::Error, "The following path couldn't be opened: '%s'. (%u)", path.c_str(),
                static_cast<unsigned>(errno));
            return;
        case FileType::Directory:
            RecursePath(path + "/", kEveryFilePattern, files);
            return;
        case FileType::Regular:
        case FileType::Fifo:
        case FileType::Socket:
        case FileType::Other:
            files.push_back({Utf8ToWide(path), {}});
            return;
    }
}

void FileCollector::RecursePath(const std::string& startPath, const std::string& pattern,
                                std::vector<FoundFile>& files) const {
    if (pattern == kNamedDirectly) {
        CollectNamedPath(startPath, files);
        return;
    }
    // A backslash at the end belongs to the directory's name here, so it is no separator.
    const std::string directory = startPath.ends_with('/') ? startPath : startPath + "/";
    Log(LogLevel::Trace, "RecursePath '%s'.\n", (directory + pattern).c_str());
    const auto entries = ListDirectory(directory);
    if (!entries) {
        Log(LogLevel::Error, "Unable to open '%s'.\n", directory.c_str());
        return;
    }
    for (auto entry = entries->rbegin(); entry != entries->rend(); ++entry) {
        if (entry->name.starts_with('.')) {
            continue;
        }
        const std::string path = directory + entry->name;
        if (IsSkippedByPath(path)) {
            continue;
        }
        // Where no size matters, nobody looks.
        const FileStatus status =
            config_.sizeThresholdBytes != 0 ? StatusOfPath(path) : FileStatus{};
        if (IsSkippedBySize(path, status)) {
            continue;
        }
        if (entry->type == EntryType::Directory) {
            RecursePath(path, pattern, files);
        } else if (entry->type == EntryType::Regular && !IsSkippedByExtension(path, entry->name)) {
            files.push_back({Utf8ToWide(path), status});
        }
    }
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

bool FileCollector::IsSkippedByExtension(const std::string& path, const std::string& name) const {
    const std::string extension = ExtensionOf(name);
    if (extension.empty()) {
        if (config_.skipFilesWithoutExtension) {
            Log(LogLevel::Trace, "Skipping file by rule ignore_files_without_extensions '%s'.\n",
                path.c_str());
        }
        return config_.skipFilesWithoutExtension;
    }
    if (config_.excludedExtensions.contains(extension)) {
        Log(LogLevel::Trace, "Skipping file by rule exclude_extensions: '%s'.\n", path.c_str());
        return true;
    }
    return false;
}

}  // namespace sealkeeper
