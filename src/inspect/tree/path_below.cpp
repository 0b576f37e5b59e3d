#include "inspect/tree/path_below.h"

namespace sealkeeper {

std::optional<std::string_view> PathBelow(std::string_view path, std::string_view directory) {
    // Only the root's path ends in a slash.
    if (directory.ends_with('/')) {
        directory.remove_suffix(1);
    }
    if (!path.starts_with(directory)) {
        return std::nullopt;
    }
    const std::string_view rest = path.substr(directory.size());
    if (rest.size() < 2 || rest.front() != '/') {
        return std::nullopt;
    }
    return rest.substr(1);
}

bool IsBelow(std::string_view path, std::string_view directory) {
    return PathBelow(path, directory).has_value();
}

}  // namespace sealkeeper
