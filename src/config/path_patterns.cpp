#include "config/path_patterns.h"

#include <strings.h>

#include <algorithm>
#include <new>

#include "app/console_log.h"
#include "platform/file_system.h"
#include "platform/glob.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

using Paths = std::vector<std::string>;

// Outcomes of one expansion. The negative numbers appear in a message.
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

ResultCode LookUpNamedPath(const std::string& path, const FileTree& tree, Paths& matches) {
    FileStatus status;
    const ResultCode code = tree.LookAtPath(path, status);
    if (status.type == FileType::Regular || status.type == FileType::Directory) {
        matches.push_back(path);
    }
    return code;
}

ResultCode FindMatches(const std::string& pattern, const FileTree& tree, Paths& matches) {
    // No path contains a zero byte, and system calls would see only what comes before it.
    if (pattern.find('\0') != std::string::npos) {
        return ResultCode::Ok;
    }
    const bool hasWildcard = pattern.find_first_of("*?") != std::string::npos;
    const ResultCode code = hasWildcard ? ExpandGlobPattern(pattern, matches, tree)
                                        : LookUpNamedPath(pattern, tree, matches);
    std::sort(matches.begin(), matches.end(),
              [](const std::string& left, const std::string& right) {
                  return strcasecmp(left.c_str(), right.c_str()) < 0;
              });
    return code;
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

// A failure of the system is reported for the pattern as well.
ResultCode ExpandPattern(const std::string& pattern, const FileTree& tree, Paths& matches) {
    try {
        const ResultCode code = FindMatches(pattern, tree, matches);
        if (code != ResultCode::Ok) {
            ReportExpansion(pattern, kReadAborted);
        } else {
            ReportExpansion(pattern, matches.empty() ? kNoMatch : kMatched);
        }
        return code;
    } catch (const std::bad_alloc&) {
        ReportExpansion(pattern, kOutOfMemory);
        throw;
    }
}

}  // namespace

ResultCode GlobPaths(const std::vector<std::string>& patterns, PathSet& paths, bool& hasMatched,
                     const FileTree& tree) {
    Paths matches;
    for (const std::string& pattern : patterns) {
        const std::string expanded = PatternInGameDirectory(pattern);
        Log(LogLevel::Trace, "GlobPaths: %s.\n", expanded.c_str());
        Paths found;
        if (const ResultCode code = ExpandPattern(expanded, tree, found); code != ResultCode::Ok) {
            return code;
        }
        matches.insert(matches.end(), found.begin(), found.end());
    }
    hasMatched = !matches.empty();
    paths.insert(matches.begin(), matches.end());
    return ResultCode::Ok;
}

}  // namespace sealkeeper
