#include "config/path_patterns.h"

#include <strings.h>

#include <algorithm>
#include <cstddef>

#include "app/console_log.h"
#include "platform/file_system.h"
#include "platform/glob_result.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

// Outcomes of one expansion; the negative ones are shown in a message.
constexpr int kMatched = 0;
constexpr int kNoMatch = 1;
constexpr int kOutOfMemory = -1;
constexpr int kReadAborted = -2;

std::string PatternInGameDirectory(const std::string& pattern) {
    std::string path = WithForwardSlashes("./" + pattern);
    if (path.back() == '/') {
        path.pop_back();
    }
    return path;
}

int AddNamedPath(const std::string& path, std::vector<std::string>& matches) {
    const FileType type = GetFileType(path);
    if (type != FileType::Regular && type != FileType::Directory) {
        return kNoMatch;
    }
    matches.push_back(path);
    return kMatched;
}

int AddGlobMatches(const std::string& pattern, std::vector<std::string>& matches) {
    const GlobResult result(pattern, GLOB_MARK | GLOB_NOSORT);
    switch (result.Status()) {
        case 0:
            break;
        case GLOB_NOMATCH:
            return kNoMatch;
        case GLOB_NOSPACE:
            return kOutOfMemory;
        default:
            return kReadAborted;
    }
    for (std::string path : result.Paths()) {
        // Directories are marked with a separator at their end.
        if (path.ends_with('/')) {
            path.pop_back();
        }
        matches.push_back(path);
    }
    return kMatched;
}

int ExpandPattern(const std::string& pattern, std::vector<std::string>& matches) {
    // No path holds a zero byte, and the system would look at what stands before it.
    if (pattern.find('\0') != std::string::npos) {
        return kNoMatch;
    }
    const auto firstNew = static_cast<std::ptrdiff_t>(matches.size());
    const bool hasWildcard = pattern.find_first_of("*?") != std::string::npos;
    const int outcome =
        hasWildcard ? AddGlobMatches(pattern, matches) : AddNamedPath(pattern, matches);
    std::sort(matches.begin() + firstNew, matches.end(),
              [](const std::string& left, const std::string& right) {
                  return strcasecmp(left.c_str(), right.c_str()) < 0;
              });
    return outcome;
}

void ReportExpansion(const std::string& pattern, int outcome) {
    if (outcome == kMatched) {
        Log(LogLevel::Info, "The following matched certain files in the target directory: '%s'.\n",
            pattern.c_str());
    } else if (outcome == kNoMatch) {
        Log(LogLevel::Warning,
            "The following did not match any files, consider removing it: '%s'.\n",
            pattern.c_str());
    } else {
        Log(LogLevel::Warning, "Failed to glob path '%s' (Error %i).\n", pattern.c_str(), outcome);
    }
}

}  // namespace

bool GlobPaths(const std::vector<std::string>& patterns, PathSet& paths) {
    std::vector<std::string> matches;
    for (const std::string& pattern : patterns) {
        const std::string expanded = PatternInGameDirectory(pattern);
        Log(LogLevel::Trace, "GlobPaths: %s.\n", expanded.c_str());
        ReportExpansion(expanded, ExpandPattern(expanded, matches));
    }
    if (matches.empty()) {
        return false;
    }
    paths.insert(matches.begin(), matches.end());
    return true;
}

}  // namespace sealkeeper
