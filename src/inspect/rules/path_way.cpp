#include "inspect/rules/path_way.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>

#include "inspect/tree/lexical_path.h"
#include "inspect/tree/path_below.h"
#include "platform/file_system.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

// A file without the right to execute fails `access` in the same way.
bool IsForbiddenDirectory(const std::string& path, int access) {
    return GetFileType(path) == FileType::Directory && ::access(path.c_str(), access) != 0 &&
           errno == EACCES;
}

// The link by which `path` leaves the directory `game`.
std::optional<std::string> LinkOutOf(const std::string& game, std::string_view path) {
    std::optional<std::string> link;
    // Goes up until a directory resolves inside the game. The component below that is the link.
    for (std::string_view way = path; !way.empty(); way = ParentOf(way)) {
        const auto resolved = ResolvePath(std::string(way));
        if (!resolved || *resolved == game || IsBelow(*resolved, game)) {
            return link;
        }
        link = way;
    }
    return link;
}

}  // namespace

std::optional<std::string> ClosedDirectoryIn(std::string_view pattern) {
    const std::string path = LexicalPath(WithForwardSlashes(std::string(pattern)));
    for (std::size_t begin = 0;;) {
        const std::size_t slash = path.find('/', begin);
        const std::string_view name = std::string_view(path).substr(begin, slash - begin);
        const bool isWildcard = name.find_first_of("*?") != std::string_view::npos;
        const std::string directory = begin == 0 ? "." : path.substr(0, begin - 1);
        if (IsForbiddenDirectory(directory, isWildcard ? R_OK : X_OK)) {
            return directory;
        }
        if (isWildcard || slash == std::string::npos) {
            return std::nullopt;
        }
        begin = slash + 1;
    }
}

OutwardLinks::OutwardLinks() : game_(ResolvePath(".").value_or("")) {}

const std::optional<std::string>& OutwardLinks::LinkOf(const std::string& path) {
    const auto [known, isNew] = known_.try_emplace(path);
    if (isNew) {
        known->second = LinkOutOf(game_, path);
    }
    return known->second;
}

}  // namespace sealkeeper
