// Finds the game's files to hash by the rules of the configuration file. Paths are expanded and
// walked in the current directory, which is the game directory by then, and begin with "./".
#ifndef SEALKEEPER_CONFIG_FILE_COLLECTOR_H
#define SEALKEEPER_CONFIG_FILE_COLLECTOR_H

#include <optional>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "config/catalogue_config.h"
#include "config/config_document.h"
#include "config/path_patterns.h"
#include "platform/directory_listing.h"
#include "platform/file_tree.h"
#include "platform/found_file.h"

namespace sealkeeper {

// The rule by which the walk passes an entry over; for a directory, with all that it holds.
enum class SkipRule {
    HiddenName,
    ExcludedPath,
    SizeThreshold,
    ExcludedExtension,
    NoExtension,
    // A link, one to nothing that a pattern names, or another thing that is neither file nor
    // directory.
    OtherType,
    // A directory that is missing or must not be read.
    Unlistable,
};

struct SkippedPath {
    // As the walk forms it; for a directory without a slash at its end.
    std::string path;
    SkipRule rule;
};

// What a walk leaves behind for whoever wants to know why it found what it found.
struct CollectionTrace {
    // Of the files, in their order, as their names are on disk.
    std::vector<std::string> paths;
    std::vector<SkippedPath> skipped;
};

// The start path and the pattern of a walk over the whole game directory. The pattern filters
// nothing; it is there for the trace.
inline constexpr const char* kWholeDirectory = "./";
inline constexpr const char* kEveryFilePattern = "*.*";

class FileCollector {
  public:
    // `basePath` is the absolute path of the game directory, ending in '/'. `tree`, which must
    // outlive the collector, is where files are looked for.
    explicit FileCollector(std::string basePath, const FileTree& tree = SystemFileTree());
    FileCollector(const FileCollector&) = delete;
    FileCollector& operator=(const FileCollector&) = delete;
    virtual ~FileCollector() = default;

    // Appends the files to hash to `files`. With included paths each of them is taken or walked, in
    // no particular order; without, the walk begins at `startPath`. A file reached in two ways
    // appears twice. What is missing or must not be read is logged and left out. Fails with
    // `SealkeeperIOError`, logged, when the system fails to read a directory or to look at a file.
    virtual ResultCode CollectFiles(const std::string& startPath, const std::string& pattern,
                                    std::vector<FoundFile>& files) const;

    // The same, and tells in `trace` what it came by.
    ResultCode CollectFilesTraced(const std::string& startPath, const std::string& pattern,
                                  std::vector<FoundFile>& files, CollectionTrace& trace) const;

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
    struct Collection;

    ResultCode CollectInto(const std::string& startPath, const std::string& pattern,
                           Collection& collection) const;
    ResultCode RecursePath(const std::string& startPath, const std::string& pattern,
                           Collection& collection) const;
    ResultCode CollectNamedPath(const std::string& path, Collection& collection) const;
    ResultCode CollectEntry(const std::string& directory, const DirectoryEntry& entry,
                            const std::string& pattern, Collection& collection) const;
    [[nodiscard]] bool IsSkippedByPath(const std::string& path) const;
    [[nodiscard]] bool IsSkippedBySize(const std::string& path, const FileStatus& status) const;
    [[nodiscard]] std::optional<SkipRule> RuleOfExtension(const std::string& path,
                                                          const std::string& name) const;

    std::string basePath_;
    const FileTree& tree_;
    CatalogueConfig config_;
    PathSet excludedPaths_;
    PathSet includedPaths_;
};

}  // namespace sealkeeper

#endif
