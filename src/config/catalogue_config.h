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
    // Files above this size are left out; 0 switches the rule off. A negative configured number of
    // megabytes is kept as the huge number that it becomes, and is compared as a signed one.
    std::uint64_t sizeThresholdBytes = kDefaultSizeThresholdBytes;
    // Exactly one of the two lists is in use; the other is empty.
    std::vector<std::string> includePaths;
    std::vector<std::string> excludePaths;
    // As written in the file: with their dot, case-sensitive.
    std::unordered_set<std::string> excludedExtensions;
    // Path parts and what replaces them, with '/' as the only separator.
    std::map<std::string, std::string> pathAliases;
    bool skipFilesWithoutExtension = false;
};

}  // namespace sealkeeper

#endif
