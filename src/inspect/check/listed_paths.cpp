#include "inspect/check/listed_paths.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/file_system.h"

namespace sealkeeper {
namespace {

struct PlainPath {
    // Without "." and empty components.
    std::string path;
    bool hasParentComponent = false;
};

PlainPath PlainPathOf(std::string_view path) {
    PlainPath plain;
    while (!path.empty()) {
        const std::string_view component = path.substr(0, path.find('/'));
        path.remove_prefix(component.size() == path.size() ? path.size() : component.size() + 1);
        if (component.empty() || component == ".") {
            continue;
        }
        plain.hasParentComponent = plain.hasParentComponent || component == "..";
        plain.path += plain.path.empty() ? "" : "/";
        plain.path += component;
    }
    return plain;
}

// The path of the file at `path` without links on the way to it, but not that of a link's target.
std::optional<std::string> ResolveDirectoriesOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ResolvePath(path);
    }
    const auto directory = ResolvePath(slash == 0 ? "/" : path.substr(0, slash));
    if (!directory) {
        return std::nullopt;
    }
    return *directory + path.substr(slash);
}

}  // namespace

ListedPaths::ListedPaths(std::string gameDirectory) : gameDirectory_(std::move(gameDirectory)) {}

void ListedPaths::Add(const std::string& path) {
    PlainPath plain = PlainPathOf(path);
    if (!plain.hasParentComponent && !path.starts_with('/')) {
        paths_.insert(std::move(plain.path));
        return;
    }
    const auto resolved = ResolveDirectoriesOf(path);
    if (resolved && resolved->starts_with(gameDirectory_)) {
        paths_.insert(PlainPathOf(resolved->substr(gameDirectory_.size())).path);
    }
}

}  // namespace sealkeeper
