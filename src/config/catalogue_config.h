// The rules that decide which of a game's files are catalogued.
#ifndef SEALKEEPER_CONFIG_CATALOGUE_CONFIG_H
#define SEALKEEPER_CONFIG_CATALOGUE_CONFIG_H

#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

namespace sealkeeper {

// Sizes in the configuration file are decimal megabytes.
inline constexpr std::uint64_t kBytesPerMegabyte = 1'000'000;
inline constexpr std::uint64_t kDefaultSizeThresholdBytes = 1024 * kBytesPerMegabyte;

struct CatalogueConfig {
    // Files above this size are left out; 0 turns the rule off. A negative number of megabytes
    // wraps to a huge unsigned value here, and is compared as a signed number.
    std::uint64_t sizeThresholdBytes = kDefaultSizeThresholdBytes;
    // Only one of the two lists is in use; the other is empty.
    std::vector<std::string> includePaths;
    std::vector<std::string> excludePaths;
    // As written in the file: with the dot, case-sensitive.
    std::unordered_set<std::string> excludedExtensions;
    // Parts of paths and their replacements, with '/' as the only separator.
    std::map<std::string, std::string> pathAliases;
    bool skipFilesWithoutExtension = false;
};

}  // namespace sealkeeper

#endif
