// Finds the files of a game to hash, by the rules of the configuration file. Paths begin with "./"
// and are relative to the current directory, which must be the game directory by then.
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

// Why the walk skips an entry. A skipped directory is skipped with all its content.
enum class SkipRule {
    HiddenName,
    ExcludedPath,
    SizeThreshold,
    ExcludedExtension,
    NoExtension,
    // A link, a device or anything else that is neither a regular file nor a directory; or a path
    // that a pattern matched and that is missing.
    OtherType,
    // A directory that is missing or that this user may not read.
    Unlistable,
};

// The rule by which the extension of a file called `name` leaves it out; nothing where it does not.
[[nodiscard]] std::optional<SkipRule> RuleOfExtension(const CatalogueConfig& config,
                                                      const std::string& name);

struct SkippedPath {
    // As the walk builds it; a directory has no slash at its end.
    std::string path;
    SkipRule rule;
};

// Why a walk found what it found.
struct CollectionTrace {
    // The paths of the files, in order, with the bytes that their names have on disk.
    std::vector<std::string> paths;
    std::vector<SkippedPath> skipped;
};

// The start path and the pattern of a walk over the whole game directory. The pattern filters
// nothing; it is only logged.
inline constexpr const char* kWholeDirectory = "./";
inline constexpr const char* kEveryFilePattern = "*.*";

class FileCollector {
  public:
    // `basePath` is the absolute path of the game directory, ending in '/'. Files are looked for in
    // `tree`, which must outlive the collector.
    explicit FileCollector(std::string basePath, const FileTree& tree = SystemFileTree());
    FileCollector(const FileCollector&) = delete;
    FileCollector& operator=(const FileCollector&) = delete;
    virtual ~FileCollector() = default;

    // Appends the files to hash to `files`. If there are include patterns, each path that they
    // matched is taken or walked, in no particular order; otherwise the walk starts at `startPath`.
    // A file that is reached in two ways appears twice. What is missing, or what this user may not
    // read, is logged and left out. Fails with `SealkeeperIOError`, logged, when the system fails
    // to read a directory or to look at a file.
    virtual ResultCode CollectFiles(const std::string& startPath, const std::string& pattern,
                                    std::vector<FoundFile>& files) const;

    // The same, and also fills `trace`.
    ResultCode CollectFilesTraced(const std::string& startPath, const std::string& pattern,
                                  std::vector<FoundFile>& files, CollectionTrace& trace) const;

    [[nodiscard]] virtual std::string BasePath() const;

    // Expands the include or exclude patterns, whichever are in use. Fails with `InitFailedConfig`,
    // logged, when include patterns match nothing, and as `GlobPaths` does.
    virtual ResultCode ResolvePaths();

    // Leaves out the file at `path`. The path must be spelled as the walk builds it: "./" and so
    // on.
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

    std::string basePath_;
    const FileTree& tree_;
    CatalogueConfig config_;
    PathSet excludedPaths_;
    PathSet includedPaths_;
};

}  // namespace sealkeeper

#endif
