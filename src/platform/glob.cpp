#include "platform/glob.h"

#include <fnmatch.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "app/console_log.h"
#include "platform/directory_listing.h"
#include "platform/file_system.h"

namespace sealkeeper {
namespace {

using Paths = std::vector<std::string>;

// Whether more components may follow. A link may lead to a directory.
bool MayBeDirectory(EntryType type) {
    return type == EntryType::Directory || type == EntryType::Link;
}

// The GNU C library's `glob` keeps at most this many slashes after a component with a pattern.
constexpr std::string_view kMostSlashesKept = "//";

struct Component {
    // The slashes before it.
    std::string separator;
    std::string text;
    // Whether anything follows, even just a slash.
    bool isDirectory = false;
};

// Takes the first component off `pattern`, which does not end in a slash.
Component TakeComponent(std::string& pattern) {
    const std::size_t begin = std::min(pattern.find_first_not_of('/'), pattern.size());
    const std::size_t end = std::min(pattern.find('/', begin), pattern.size());
    Component component{pattern.substr(0, begin), pattern.substr(begin, end - begin),
                        end != pattern.size()};
    pattern.erase(0, end);
    return component;
}

// Appends to `paths` the path of each entry of `directory` whose name matches `component`.
ResultCode AddMatchesIn(const std::string& directory, const Component& component,
                        const FileTree& tree, Paths& paths) {
    std::optional<DirectoryEntries> entries;
    if (const ResultCode code = tree.ReadDirectory(directory.empty() ? "." : directory, entries);
        code != ResultCode::Ok) {
        return code;
    }
    for (const DirectoryEntry& entry : entries.value_or(DirectoryEntries())) {
        if (component.isDirectory && !MayBeDirectory(entry.type)) {
            continue;
        }
        const int result = fnmatch(component.text.c_str(), entry.name.c_str(), FNM_PERIOD);
        if (result == 0) {
            paths.push_back(directory + component.separator + entry.name);
        } else if (result != FNM_NOMATCH) {
            Log(LogLevel::Error, "Could not match '%s'.\n", component.text.c_str());
            return ResultCode::SealkeeperIOError;
        }
    }
    return ResultCode::Ok;
}

ResultCode ExpandComponent(const Component& component, const FileTree& tree, Paths& paths) {
    Paths longer;
    for (const std::string& directory : paths) {
        if (const ResultCode code = AddMatchesIn(directory, component, tree, longer);
            code != ResultCode::Ok) {
            return code;
        }
    }
    paths = std::move(longer);
    return ResultCode::Ok;
}

// Keeps only those `paths` for which `look`, called with the path and a flag, sets the flag.
template <typename Look>
ResultCode KeepThose(Paths& paths, Look look) {
    Paths kept;
    for (std::string& path : paths) {
        bool isWanted = false;
        if (const ResultCode code = look(path, isWanted); code != ResultCode::Ok) {
            return code;
        }
        if (isWanted) {
            kept.push_back(std::move(path));
        }
    }
    paths = std::move(kept);
    return ResultCode::Ok;
}

}  // namespace

bool HasPattern(const std::string& text) {
    return text.find_first_of("*?[") != std::string::npos;
}

ResultCode ExpandGlobPattern(const std::string& pattern, Paths& paths, const FileTree& tree) {
    std::string rest = pattern;
    while (rest.ends_with('/')) {
        rest.pop_back();
    }
    const bool endsInSlash = rest.size() < pattern.size();
    paths = {""};
    bool isExpanded = false;
    bool endsInPattern = false;
    while (!rest.empty()) {
        Component component = TakeComponent(rest);
        component.isDirectory = component.isDirectory || endsInSlash;
        if (isExpanded && component.separator.size() > kMostSlashesKept.size()) {
            component.separator = kMostSlashesKept;
        }
        endsInPattern = HasPattern(component.text);
        if (!endsInPattern) {
            for (std::string& path : paths) {
                path += component.separator + component.text;
            }
            continue;
        }
        if (const ResultCode code = ExpandComponent(component, tree, paths);
            code != ResultCode::Ok) {
            return code;
        }
        isExpanded = true;
    }
    if (!endsInPattern) {
        return KeepThose(paths, [&tree](const std::string& path, bool& isThere) {
            return tree.LookForName(path, isThere);
        });
    }
    if (endsInSlash) {
        return KeepThose(paths, [&tree](const std::string& path, bool& isDirectory) {
            FileStatus status;
            const ResultCode code = tree.LookAtPath(path, status);
            isDirectory = status.type == FileType::Directory;
            return code;
        });
    }
    return ResultCode::Ok;
}

}  // namespace sealkeeper
