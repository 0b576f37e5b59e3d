// Finds the game's files to hash by the rules of the configuration file. Paths are expanded and
// walked in the current directory, which is the game directory by then, and begin with "./".
#ifndef SEALKEEPER_CONFIG_FILE_COLLECTOR_H
#define SEALKEEPER_CONFIG_FILE_COLLECTOR_H

#include <string>
#include <vector>

#include "app/result_code.h"
#include "config/catalogue_config.h"
#include "config/config_document.h"
#include "config/path_patterns.h"
#include "platform/directory_listing.h"
#include "platform/found_file.h"

namespace sealkeeper {

// The start path and the pattern of a walk over the whole game directory. The pattern filters
// nothing; it is there for the trace.
inline constexpr const char* kWholeDirectory = "./";
inline constexpr const char* kEveryFilePattern = "*.*";

class FileCollector {
  public:
    // `basePath` is the absolute path of the game directory, ending in '/'.
    explicit FileCollector(std::string basePath);
    FileCollector(const FileCollector&) = delete;
    FileCollector& operator=(const FileCollector&) = delete;
    virtual ~FileCollector() = default;

    // Appends the files to hash to `files`. With included paths each of them is taken or walked, in
    // no particular order; without, the walk begins at `startPath`. A file reached in two ways
    // appears twice. What is missing or must not be read is logged and left out. Fails with
    // `SealkeeperIOError`, logged, when the system fails to read a directory or to look at a file.
    virtual ResultCode CollectFiles(const std::string& startPath, const std::string& pattern,
                                    std::vector<FoundFile>& files) const;

    [[nodiscard]] virtual std::string BasePath() const;

    // Expands the patterns of the mode in use. Fails with `InitFailedConfig`, logged, when include
    // patterns match nothing, and as `GlobPaths`.
    virtual ResultCode ResolvePaths();

    // Leaves out the file at `path`, which is compared as the walk forms it ("./" and so on).
    virtual void AddExcludedPath(const std::string& path);

    // Takes the rules from the section "search_options"; see `ReadCatalogueRules`.
    virtual ResultCode ApplyCatalogueRules(ConfigSection& searchOptions);

    [[nodiscard]] const CatalogueConfig& Config() const { return config_; }

  private:
    ResultCode RecursePath(const std::string& startPath, const std::string& pattern,
                           std::vector<FoundFile>& files) const;
    ResultCode CollectNamedPath(const std::string& path, std::vector<FoundFile>& files) const;
    ResultCode CollectEntry(const std::string& directory, const DirectoryEntry& entry,
                            const std::string& pattern, std::vector<FoundFile>& files) const;
    [[nodiscard]] bool IsSkippedByPath(const std::string& path) const;
    [[nodiscard]] bool IsSkippedBySize(const std::string& path, const FileStatus& status) const;
    [[nodiscard]] bool IsSkippedByExtension(const std::string& path, const std::string& name) const;

    std::string basePath_;
    CatalogueConfig config_;
    PathSet excludedPaths_;
    PathSet includedPaths_;
};

}  // namespace sealkeeper

#endif
