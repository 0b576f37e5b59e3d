#include "inspect/check/listed_paths.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "inspect/tree/lexical_path.h"
#include "inspect/tree/parent_component.h"
#include "platform/file_system.h"

namespace sealkeeper {
namespace {

// Resolves links in the directories of `path`, but not the file itself.
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
    // The meaning of ".." depends on links before it, so the system must resolve it.
    if (!HasParentComponent(path) && !path.starts_with('/')) {
        paths_.insert(LexicalPath(path));
        return;
    }
    const auto resolved = ResolveDirectoriesOf(path);
    if (resolved && resolved->starts_with(gameDirectory_)) {
        paths_.insert(LexicalPath(resolved->substr(gameDirectory_.size())));
    }
}

}  // namespace sealkeeper
