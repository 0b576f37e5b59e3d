#include "inspect/rules/path_way.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <utility>

#include "inspect/tree/access_right.h"
#include "inspect/tree/lexical_path.h"
#include "inspect/tree/path_below.h"
#include "platform/file_system.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

ResultCode AskForRightToDirectory(const std::string& path, int right, bool& isForbidden) {
    FileStatus status;
    if (const ResultCode code = LookAtPath(path, status); code != ResultCode::Ok) {
        return code;
    }
    isForbidden = false;
    // A file without the right to execute would look like a closed directory.
    return status.type == FileType::Directory ? AskForRight(path, right, isForbidden)
                                              : ResultCode::Ok;
}

// As `OutwardLinks::Find`, for the directory `game`.
ResultCode FindLinkOutOf(const std::string& game, std::string_view path,
                         std::optional<std::string>& link) {
    std::optional<std::string> found;
    // Goes up until a directory resolves inside the game. The component below that is the link.
    for (std::string_view way = path; !way.empty(); way = ParentOf(way)) {
        std::string resolved;
        if (const ResultCode code = ResolveInGame(std::string(way), resolved);
            code != ResultCode::Ok) {
            return code;
        }
        if (resolved.empty() || resolved == game || IsBelow(resolved, game)) {
            break;
        }
        found = way;
    }
    link = std::move(found);
    return ResultCode::Ok;
}

}  // namespace

ResultCode ResolveInGame(const std::string& path, std::string& resolved) {
    auto found = ResolvePath(path);
    // Read before the assignment below may free memory and change it.
    const int systemError = errno;
    const bool isFound = found.has_value();
    resolved = std::move(found).value_or("");
    return isFound ? ResultCode::Ok : JudgeLookError(path, systemError);
}

ResultCode FindClosedDirectory(std::string_view pattern, std::optional<std::string>& closed) {
    closed.reset();
    const std::string path = LexicalPath(WithForwardSlashes(std::string(pattern)));
    for (std::size_t begin = 0;;) {
        const std::size_t slash = path.find('/', begin);
        const std::string_view name = std::string_view(path).substr(begin, slash - begin);
        const bool isWildcard = name.find_first_of("*?") != std::string_view::npos;
        std::string directory = begin == 0 ? "." : path.substr(0, begin - 1);
        bool isForbidden = false;
        if (const ResultCode code =
                AskForRightToDirectory(directory, isWildcard ? R_OK : X_OK, isForbidden);
            code != ResultCode::Ok) {
            return code;
        }
        if (isForbidden) {
            closed = std::move(directory);
            return ResultCode::Ok;
        }
        if (isWildcard || slash == std::string::npos) {
            return ResultCode::Ok;
        }
        begin = slash + 1;
    }
}

ResultCode OutwardLinks::Find(const std::string& path, std::optional<std::string>& link) {
    if (const auto known = known_.find(path); known != known_.end()) {
        link = known->second;
        return ResultCode::Ok;
    }
    if (game_.empty()) {
        if (const ResultCode code = ResolveInGame(".", game_); code != ResultCode::Ok) {
            return code;
        }
    }
    if (const ResultCode code = FindLinkOutOf(game_, path, link); code != ResultCode::Ok) {
        return code;
    }
    known_.emplace(path, link);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
